// One stamp of the custom brush: the routine chosen by the painting mode, the
// brush mode (colour or matte), the button and the paper.
#include <algorithm>
#include <vector>

#include "brush/BrushOptions.h"
#include "brush/BrushState.h"
#include "brush/CustomBrush.h"
#include "colour/Paper.h"
#include "core/document/Buffers.h"
#include "core/framework/AppState.h"
#include "core/framework/Codes.h"
#include "core/framework/MixTables.h"
#include "core/framework/vb.h"
#include "core/frame/Form2.h"
#include "native/CustomBrushKernels.h"

namespace {
using kwmode::PaintMode;

// The mixing table of a table mode, or nullptr for the other modes.
const uint8_t* TableOf(PaintMode mode) {
    switch (mode) {
        case PaintMode::Additive: return MixAdd;
        case PaintMode::Subtract: return MixSub;
        case PaintMode::Multiply: return MixMult;
        case PaintMode::Divide: return MixDiv;
        case PaintMode::Screen: return MixScreen;
        case PaintMode::AroundGrey: return MixAroundGrey;
        default: return nullptr;
    }
}

struct Stamp {
    kwbrush::BrushPlanes brush;
    kwbrush::CustomTarget target;
    kwbrush::PaperPlanes paper;
    int opacity;
    uint8_t alphaOff;
};

// The brush shrunk for a light pen, nearest pixel; kept between dabs so a
// stroke allocates only when the size grows.
struct Shrunk {
    std::vector<uint8_t> planes[4];
    kwbrush::BrushPlanes Make(float factor) {
        const int w = std::max(1, vb::CLng(BrushWidth * factor)), h = std::max(1, vb::CLng(BrushHeight * factor));
        const Plane* from[4] = {&BrushR, &BrushG, &BrushB, &BrushA};
        for (int k = 0; k < 4; ++k) {
            planes[k].resize(static_cast<size_t>(w) * static_cast<size_t>(h));
            for (int y = 0; y < h; ++y)
                for (int x = 0; x < w; ++x)
                    planes[k][static_cast<size_t>(y * w + x)] = (*from[k])(x * BrushWidth / w, y * BrushHeight / h);
        }
        return {planes[0].data(), planes[1].data(), planes[2].data(), planes[3].data(), static_cast<size_t>(w), w, h};
    }
} shrunk;

Stamp MakeStamp(int opacity, float sizeFactor) {
    Stamp s;
    s.brush = {BrushR.data(), BrushG.data(), BrushB.data(), BrushA.data(), BrushR.stride(), BrushWidth, BrushHeight};
    if (sizeFactor < 1) s.brush = shrunk.Make(sizeFactor);
    s.target = {BufR.data(),       BufG.data(),
                BufB.data(),       BufA.data(),
                BufR.stride(),     std::min(BufferWidth(), BufR.ubX()),
                std::min(BufferHeight(), BufR.ubY())};
    if (PaperUsable()) s.paper = {PaperF.data(), PaperB.data(), PaperB.stride(), PaperWidth, PaperHeight};
    s.opacity = opacity;
    s.alphaOff = App.AlphaOff;
    return s;
}

// The modes that take their paint from elsewhere; false for the others.
bool SourceModes(const Stamp& s, PaintMode mode) {
    switch (mode) {
        case PaintMode::Rubthrough:
            if (SwapR.ubX() == BufR.ubX() && SwapR.ubY() == BufR.ubY())
                kwbrush::RubBrushBlit(s.brush, s.target, {SwapR.data(), SwapG.data(), SwapB.data()}, BlitX, BlitY,
                                      s.opacity, s.alphaOff);
            return true;
        case PaintMode::Pattern:
            kwbrush::PatBrushBlit(s.brush, s.target, BlitX, BlitY, s.opacity, s.alphaOff, 0, 0);
            return true;
        case PaintMode::OffsetPattern:
            kwbrush::PatBrushBlit(s.brush, s.target, BlitX, BlitY, s.opacity, s.alphaOff, PatOrgX, PatOrgY);
            return true;
        default: return false;
    }
}

// Smear copies from where the last dab lay, panto from the clone offset.
void CloneModes(const Stamp& s, PaintMode mode, float X, float Y) {
    if (mode == PaintMode::Smear)
        kwbrush::CloneBrushBlit(s.brush, s.target, BlitX, BlitY, s.opacity, s.alphaOff, 0, vb::CLng(X) - PrevDabX,
                                vb::CLng(Y) - PrevDabY);
    else
        kwbrush::CloneBrushBlit(s.brush, s.target, BlitX, BlitY, s.opacity, s.alphaOff, 1, PantoX, PantoY);
}

void ColourStamp(const Stamp& s, PaintMode mode) {
    const uint8_t* table = TableOf(mode);
    if (table)
        kwbrush::Full_CustomBrushBlit(s.brush, s.target, table, BumpinessOn ? s.paper : kwbrush::PaperPlanes{}, BlitX,
                                      BlitY, s.opacity, s.alphaOff, 1);
    else if (BumpinessOn)
        kwbrush::Full_CustomBrushBlit(s.brush, s.target, nullptr, s.paper, BlitX, BlitY, s.opacity, s.alphaOff, 0);
    else
        kwbrush::CustomBrushBlit(s.brush, s.target, BlitX, BlitY, s.opacity, s.alphaOff);
}

void MatteStamp(const Stamp& s, PaintMode mode, int16_t button) {
    int r = DabR, g = DabG, b = DabB;
    if (button != MouseButton::Left) {
        const uint32_t secondary = Form2::Shape1.FillColor;
        r = vb::RedOf(secondary), g = vb::GreenOf(secondary), b = vb::BlueOf(secondary);
    }
    const int flags = (BumpinessOn ? kwbrush::Bumpiness : 0) | (DrybrushOn ? kwbrush::Drybrush : 0) |
                      (NegativeOn ? kwbrush::Negative : 0);
    const float strength = static_cast<float>(Form2::HScroll6.Value / 2.55);
    if (const uint8_t* table = TableOf(mode))
        kwbrush::Full_CustomMatteBlit(s.brush, s.target, table, r, g, b, s.paper, strength, BlitX, BlitY, s.opacity,
                                      s.alphaOff, 1, flags);
    else if (BumpinessOn || DrybrushOn)
        kwbrush::Paper_CustomMatteBlit(s.brush, s.target, r, g, b, BlitX, BlitY, s.opacity, s.alphaOff, s.paper,
                                       strength, flags);
    else
        kwbrush::Fast_CustomMatteBlit(s.brush, s.target, r, g, b, BlitX, BlitY, s.opacity, s.alphaOff);
}
}  // namespace

void CustomBlit(int16_t& Button, float& X, float& Y) {
    int opacity = Form2::HScroll4.Value;
    if (BrushOptions::Hscroll8.Value > 0) opacity = vb::CInt(App.BrushFlow);
    const float pressure = BrushOptions::PressureFactor(BrushOptions::Check3);
    if (pressure < 1) opacity = vb::CInt(opacity * pressure);
    const float centreX = X, centreY = Y;
    if (!BrushExists() || !DocumentExists()) return;
    const Stamp s = MakeStamp(opacity, BrushOptions::PressureFactor(BrushOptions::Check2));
    BlitY = vb::CLng(std::clamp(Y - s.brush.h / 2.0f, -1e9f, 1e9f));
    BlitX = vb::CLng(std::clamp(X - s.brush.w / 2.0f, -1e9f, 1e9f));
    X = static_cast<float>(BlitX);
    Y = static_cast<float>(BlitY);
    const PaintMode mode = BrushMode;
    if (SourceModes(s, mode)) return;
    if (mode == PaintMode::Smear || mode == PaintMode::Panto) return CloneModes(s, mode, centreX, centreY);
    if (BrushMatte == 0 && Button == MouseButton::Left) ColourStamp(s, mode);
    else MatteStamp(s, mode, Button);
}
