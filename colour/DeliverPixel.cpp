// The settings snapshot of DeliverPixel, its classic single-pixel entry, the
// whole-buffer fill, the colour baster and the single pixel readers.
#include "colour/DeliverPixel.h"

#include <algorithm>
#include <vector>

#include "colour/Gradients.h"
#include "colour/Paper.h"
#include "core/framework/AppState.h"
#include "core/document/Buffers.h"
#include "core/display/Display.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/MixTables.h"
#include "core/document/Undo.h"
#include "native/DeliverRows.h"

int16_t OpacitySaved = 0, OpacityInverse = 0;
float OpacityFraction = 1.0f;
DeliverStatics DeliverKept;

namespace {
using kwmode::Blend;
using kwmode::FillMode;

// The mixing table of a fill mode's blend; subtract takes the picture first.
const uint8_t* FillModeTable(FillMode mode, bool& swapped) {
    swapped = false;
    switch (kwmode::BlendOf(mode)) {
        case Blend::Add: return MixAdd;
        case Blend::Subtract: swapped = true; return MixSub;  // the picture minus the paint
        case Blend::Multiply: return MixMult;
        case Blend::Divide: return MixDiv;
        case Blend::Screen: return MixScreen;
        default: return nullptr;
    }
}

// The paper and the custom brush, when they can be read.
void ReadPaperAndBrush(kwfill::DeliverSettings& s) {
    s.bump = BumpinessOn != 0;
    s.dry = DrybrushOn != 0;
    s.negative = NegativeOn != 0;
    s.strength = PaperStrength;
    if (PaperUsable()) {
        s.paperB = PaperB.data();
        s.paperF = PaperF.data();
        s.paperStride = PaperB.stride();
        s.paperW = PaperWidth;
        s.paperH = PaperHeight;
    }
    if (CustomBrushUsable()) {
        s.brushR = BrushR.data();
        s.brushG = BrushG.data();
        s.brushB = BrushB.data();
        s.brushStride = BrushR.stride();
        s.brushW = BrushWidth;
        s.brushH = BrushHeight;
    }
    s.interpolate = App.BrushInterpolate != 0;
}

// The picture, its alpha and the swap layer; rubthrough without a swap layer
// of the picture's shape leaves the colour alone.
void ReadPlanes(kwfill::DeliverSettings& s) {
    s.r = BufR.data();
    s.g = BufG.data();
    s.b = BufB.data();
    s.a = BufA.data();
    s.stride = BufR.stride();
    const bool swapFits = !SwapR.empty() && SwapR.ubX() == BufR.ubX() && SwapR.ubY() == BufR.ubY();
    if (s.mode == FillMode::Rubthrough && !swapFits) s.mode = FillMode::Default;
    s.sr = SwapR.data();
    s.sg = SwapG.data();
    s.sb = SwapB.data();
    s.alphaOff = App.AlphaOff;
}
}  // namespace

DeliverRun DeliverBegin() {
    DeliverRun run;
    kwfill::DeliverSettings& s = run.settings;
    s.style = App.FillStyle;
    s.mode = App.FillMode;
    s.noiseAmount = App.NoiseAmount;
    s.noisePerChannel = App.NoiseMode == 1;
    const int g = App.GradientIndex & 7;
    s.gradR = GradientData[g][0];
    s.gradG = GradientData[g][1];
    s.gradB = GradientData[g][2];
    s.gradA = GradientData[g][3];
    s.opacity = App.Opacity;
    s.opacityFraction = OpacityFraction;
    ReadPaperAndBrush(s);
    s.table = FillModeTable(s.mode, s.tableSwapped);
    ReadPlanes(s);
    run.state = {DeliverKept.R, DeliverKept.G, DeliverKept.B, DeliverKept.t, OpacitySaved, OpacityInverse};
    return run;
}

void DeliverEnd(const kwfill::DeliverState& state) {
    DeliverKept = {state.R, state.G, state.B, state.t};
    OpacitySaved = state.opacitySaved;
    OpacityInverse = state.opacityInverse;
}

void DeliverPixel(int32_t& Colour, int16_t& X, int16_t& Y, int16_t& X1, int16_t& Y1, int16_t& X2, int16_t& Y2,
                  int32_t& Result) {
    if (!BufR.inBounds(X, Y) || !BufA.inBounds(X, Y)) {
        Result = Colour;
        return;
    }
    DeliverRun run = DeliverBegin();
    const uint32_t colour = static_cast<uint32_t>(Colour);
    Result = static_cast<int32_t>(DeliverPixel(run.settings, run.state, colour, X, Y, X1, Y1, X2, Y2));
    DeliverEnd(run.state);
}

void LoadFillOpacity() {
    App.Opacity = static_cast<int16_t>(Form2::HScroll4.Value);
    OpacitySaved = App.Opacity;
    OpacityFraction = static_cast<float>(App.Opacity) / 255.0f;
    ReadPaperState();
}

void Buffer_Fill_Click() {
    if (!DocumentExists()) return;
    {
        UndoByBands undo;
        LoadFillOpacity();
        DeliverFill(Form2::Shape4.FillColor, &undo);
    }
    RedisplayWindow();
}

SpanNoise::SpanNoise(const kwfill::DeliverSettings& s, unsigned steps, size_t widest)
    : per_((steps & kwfill::DpNoise) ? kwfill::NoiseDrawCount(s) : 0), widest_(widest) {
    if (per_ == 1) one_.resize(widest);
    if (per_ == 3) channels_.resize(3 * widest);
}

kwfill::SpanDraws SpanNoise::Draw(size_t n) {
    kwfill::SpanDraws d;
    if (per_ == 1) {
        vb::RndRow(one_.data(), n);
        d.all = one_.data();
    } else if (per_ == 3) {
        for (size_t k = 0; k < 3; ++k) d.channel[k] = channels_.data() + k * widest_;
        vb::RndRowNoise(channels_.data(), channels_.data() + widest_, channels_.data() + 2 * widest_, n);
    }
    return d;
}

namespace {
// The picture row by row through the row kernel. The noise draws are taken
// from the shared generator in the order the single-pixel kernel takes them,
// for several rows at once: a row of draws made in lanes starts each lane at
// its place in the sequence, which costs the same for a short row as a long one.
// With an undo snapshot by bands, each band goes into it first and is then
// read again from the cache.
template <unsigned Steps>
void FillRows(const kwfill::DeliverSettings& s, kwfill::DeliverState& state, uint32_t colour, int W, int H,
              UndoByBands* undo) {
    kwfill::FillPlan plan = kwfill::PlanFill(s, colour, 0, W - 1, 0, W);
    const int rowsAtOnce = std::max(1, 32768 / W);
    plan.warmAhead = static_cast<ptrdiff_t>(rowsAtOnce) * static_cast<ptrdiff_t>(s.stride);
    SpanNoise noise(s, Steps, static_cast<size_t>(W) * static_cast<size_t>(rowsAtOnce));
    kwfill::DeliverState st = state;
    for (int top = 0; top < H; top += rowsAtOnce) {
        const int rows = std::min(rowsAtOnce, H - top);
        if (undo) undo->Take(top + rows - 1);
        const kwfill::SpanDraws draws = noise.Draw(static_cast<size_t>(W) * static_cast<size_t>(rows));
        for (int y = top; y < top + rows; ++y)
            kwfill::DeliverRow<Steps>(s, plan, st, draws.At(static_cast<size_t>(y - top) * static_cast<size_t>(W)),
                                      colour, y, 0, 0, W - 1, H - 1, BufR.row(y), BufG.row(y), BufB.row(y));
    }
    state = st;
}
}  // namespace

void DeliverFill(uint32_t colour, UndoByBands* undo) {
    if (!DocumentExists()) return;
    const int W = std::min(BufferWidth(), BufR.ubX()), H = std::min(BufferHeight(), BufR.ubY());
    if (W <= 0 || H <= 0) return;
    DeliverRun run = DeliverBegin();
    // A fill without alpha is compiled without the test of the alpha plane.
    if ((kwfill::DeliverSteps(run.settings) & kwfill::DpAlpha) == 0)
        FillRows<kwfill::DpAll & ~kwfill::DpAlpha>(run.settings, run.state, colour, W, H, undo);
    else FillRows<kwfill::DpAll>(run.settings, run.state, colour, W, H, undo);
    DeliverEnd(run.state);
}

void TurkeyColor(int32_t X, int32_t Y, int32_t& R, int32_t& G, int32_t& B) {
    const int W = std::min(BufferWidth(), BufR.ubX()), H = std::min(BufferHeight(), BufR.ubY());
    R = G = B = 0;
    if (X < 0 || Y < 0 || X > W || Y > H || BufR.empty()) return;
    int reach = Menus::baster9.Checked ? 2 : (Menus::baster5.Checked ? 1 : 0);
    if (reach == 0) {
        R = BufR(X, Y);
        G = BufG(X, Y);
        B = BufB(X, Y);
        return;
    }
    // Pixels off the picture count as black: the divisor stays, so edges come out darker.
    int sr = 0, sg = 0, sb = 0;
    for (int dy = -reach; dy <= reach; ++dy)
        for (int dx = -reach; dx <= reach; ++dx) {
            int x = X + dx, y = Y + dy;
            if (x < 0 || y < 0 || x > W - 1 || y > H - 1) continue;
            sr += BufR(x, y);
            sg += BufG(x, y);
            sb += BufB(x, y);
        }
    const double n = (2 * reach + 1) * (2 * reach + 1);
    R = vb::CLng(sr / n);
    G = vb::CLng(sg / n);
    B = vb::CLng(sb / n);
}

