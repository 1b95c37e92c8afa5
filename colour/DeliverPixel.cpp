// The settings snapshot of DeliverPixel, its classic single-pixel entry, the
// whole-buffer fill, the colour baster and the single pixel readers.
#include "colour/DeliverPixel.h"

#include "colour/Gradients.h"
#include "colour/Paper.h"
#include "core/framework/AppState.h"
#include "core/document/Buffers.h"
#include "core/display/Display.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/MixTables.h"
#include "core/document/Undo.h"

int16_t OpacitySaved = 0, OpacityInverse = 0;
float OpacityFraction = 1.0f;
DeliverStatics DeliverKept;

namespace {
const uint8_t* FillModeTable(int mode, bool& swapped) {
    swapped = false;
    switch (mode) {
        case 1: return MixAdd;
        case 2: swapped = true; return MixSub;  // the picture minus the paint
        case 3: return MixMult;
        case 5: return MixDiv;
        case 6: return MixScreen;
        default: return nullptr;
    }
}

}  // namespace

DeliverContext DeliverBegin() {
    DeliverContext c{};
    c.fillStyle = App.FillStyle;
    c.fillMode = App.FillMode;
    c.noiseAmount = App.NoiseAmount;
    c.noiseMode = App.NoiseMode;
    int g = App.GradientIndex & 7;
    c.gradR = GradientData[g][0];
    c.gradG = GradientData[g][1];
    c.gradB = GradientData[g][2];
    c.gradA = GradientData[g][3];
    c.opacity = App.Opacity;
    c.opacityFraction = OpacityFraction;
    c.bump = BumpinessOn != 0;
    c.dry = DrybrushOn != 0;
    c.negative = NegativeOn != 0;
    c.strength = PaperStrength;
    if (PaperUsable()) {
        c.paperB = PaperB.data();
        c.paperF = PaperF.data();
        c.paperStride = PaperB.stride();
        c.paperW = PaperWidth;
        c.paperH = PaperHeight;
    }
    if (CustomBrushUsable()) {
        c.brushR = BrushR.data();
        c.brushG = BrushG.data();
        c.brushB = BrushB.data();
        c.brushStride = BrushR.stride();
        c.brushW = BrushWidth;
        c.brushH = BrushHeight;
    }
    c.interpolate = App.BrushInterpolate != 0;
    c.table = FillModeTable(c.fillMode, c.tableSwapped);
    c.r = BufR.data();
    c.g = BufG.data();
    c.b = BufB.data();
    c.a = BufA.data();
    c.stride = BufR.stride();
    // Rubthrough reads the swap planes; without them it leaves the colour alone.
    if (c.fillMode == 7 && (SwapR.empty() || SwapR.ubX() != BufR.ubX() || SwapR.ubY() != BufR.ubY())) c.fillMode = 0;
    c.sr = SwapR.data();
    c.sg = SwapG.data();
    c.sb = SwapB.data();
    c.alphaOff = App.AlphaOff;
    c.R = DeliverKept.R;
    c.G = DeliverKept.G;
    c.B = DeliverKept.B;
    c.t = DeliverKept.t;
    c.opacitySaved = OpacitySaved;
    c.opacityInverse = OpacityInverse;
    return c;
}

void DeliverEnd(const DeliverContext& c) {
    DeliverKept.R = c.R;
    DeliverKept.G = c.G;
    DeliverKept.B = c.B;
    DeliverKept.t = c.t;
    OpacitySaved = c.opacitySaved;
    OpacityInverse = c.opacityInverse;
}

void DeliverPixel(int32_t& Colour, int16_t& X, int16_t& Y, int16_t& X1, int16_t& Y1, int16_t& X2, int16_t& Y2,
                  int32_t& Result) {
    if (!BufR.inBounds(X, Y) || !BufA.inBounds(X, Y)) {
        Result = Colour;
        return;
    }
    DeliverContext c = DeliverBegin();
    Result = static_cast<int32_t>(DeliverPixel(c, static_cast<uint32_t>(Colour), X, Y, X1, Y1, X2, Y2));
    DeliverEnd(c);
}

void LoadFillOpacity() {
    App.Opacity = static_cast<int16_t>(Form2::HScroll4.Value);
    OpacitySaved = App.Opacity;
    OpacityFraction = static_cast<float>(App.Opacity) / 255.0f;
    ReadPaperState();
}

void Buffer_Fill_Click() {
    if (!DocumentExists()) return;
    SaveUndo();
    LoadFillOpacity();
    DeliverFill(Form2::Shape4.FillColor);
    RedisplayWindow();
}

namespace {
template <unsigned Steps>
void FillRows(DeliverContext& context, uint32_t colour, int W, int H) {
    // A copy whose address never leaves this function: the byte stores below
    // cannot alias it, so its fields stay in registers.
    DeliverContext c = context;
    for (int y = 0; y < H; ++y) {
        uint8_t* r = BufR.row(y);
        uint8_t* g = BufG.row(y);
        uint8_t* b = BufB.row(y);
        for (int x = 0; x < W; ++x) {
            uint32_t v = DeliverPixelIn<Steps>(c, colour, x, y, 0, 0, W - 1, H - 1);
            r[x] = static_cast<uint8_t>(v);
            g[x] = static_cast<uint8_t>(v >> 8);
            b[x] = static_cast<uint8_t>(v >> 16);
        }
    }
    context = c;
}
}  // namespace

void DeliverFill(uint32_t colour) {
    if (!DocumentExists()) return;
    const int W = std::min(BufferWidth(), BufR.ubX()), H = std::min(BufferHeight(), BufR.ubY());
    DeliverContext c = DeliverBegin();
    // The plain fill of one colour is compiled without the steps it cannot need.
    if (DeliverSteps(c) == 0) FillRows<0>(c, colour, W, H);
    else FillRows<DpAll>(c, colour, W, H);
    DeliverEnd(c);
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

namespace {
void ReadAt(const Plane& p, int16_t x, int16_t y, uint8_t& out) {
    out = p.inBounds(x, y) && x < BufferWidth() && y < BufferHeight() ? p(x, y) : 0;
}
}  // namespace

void AlphaRPixel(int16_t& x, int16_t& y, uint8_t& out) { ReadAt(BufR, x, y, out); }
void AlphaGPixel(int16_t& x, int16_t& y, uint8_t& out) { ReadAt(BufG, x, y, out); }
void AlphaBPixel(int16_t& x, int16_t& y, uint8_t& out) { ReadAt(BufB, x, y, out); }
void uAlphaRPixel(int16_t& x, int16_t& y, uint8_t& out) { ReadAt(UndoR, x, y, out); }
void uAlphaGPixel(int16_t& x, int16_t& y, uint8_t& out) { ReadAt(UndoG, x, y, out); }
void uAlphaBPixel(int16_t& x, int16_t& y, uint8_t& out) { ReadAt(UndoB, x, y, out); }
