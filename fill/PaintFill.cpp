// The paint fills: the selection's copy becomes the coat's strength, the
// adjustable one fading it along a band first, and the coat goes in by it.
#include "fill/PaintFill.h"

#include <algorithm>
#include <fstream>
#include <string>

#include "colour/Paper.h"
#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/document/Buffers.h"
#include "core/document/Undo.h"
#include "core/frame/Form2.h"
#include "core/framework/AppState.h"
#include "core/framework/Host.h"
#include "core/framework/vb.h"
#include "fill/FillShared.h"
#include "fill/LinearTools.h"
#include "filter/FilterFrame.h"
#include "native/PaintFill.h"

Plane StrokeTexture;

namespace {
using kwpaintfill::StrokeH;
using kwpaintfill::StrokeW;

// A binary greyscale picture: "P5", width, height, 255, then the bytes.
bool ReadStrokeTexture(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::string magic;
    int w = 0, h = 0, max = 0;
    if (!(in >> magic >> w >> h >> max) || magic != "P5" || w != StrokeW || h != StrokeH || max != 255) return false;
    in.get();  // the one white space before the bytes
    Plane t;
    t.alloc(StrokeW - 1, StrokeH - 1, false);
    for (int y = 0; y < StrokeH; ++y)
        if (!in.read(reinterpret_cast<char*>(t.row(y)), StrokeW)) return false;
    StrokeTexture = std::move(t);
    return true;
}

// The selection's copy: alpha as it masks, so that with alpha off the coat covers the picture.
Plane SelectionCopy(const FillArea& area) {
    Plane m;
    m.alloc(BufA.ubX(), BufA.ubY(), false);
    for (int y = 0; y <= BufA.ubY(); ++y) {
        const uint8_t* a = BufA.row(y);
        uint8_t* out = m.row(y);
        for (int x = 0; x <= BufA.ubX(); ++x) out[x] = x < area.W && y < area.H ? a[x] | App.AlphaOff : 0;
    }
    return m;
}

kwpaintfill::Texture Grain(const Plane& p, int w, int h) {
    if (p.empty() || w <= 0 || h <= 0 || p.ubX() < w - 1 || p.ubY() < h - 1) return {};
    return {p.data(), p.stride(), w, h};
}

void LayCoat(Plane& M, const FillArea& area) {
    const uint32_t c = Form2::Shape4.FillColor;
    kwpaintfill::Coat coat{M.data(), BufR.data(), BufG.data(), BufB.data(), BufR.stride(), area.W, area.H, {}, {},
                           255 - Form2::HScroll4.Value, {vb::RedOf(c), vb::GreenOf(c), vb::BlueOf(c)}};
    // The stroke picture repeats every 376 by 357 pixels.
    coat.stroke = Grain(StrokeTexture, StrokeW - 1, StrokeH - 1);
    if (PaperUsable()) coat.paper = Grain(PaperB, PaperWidth, PaperHeight);
    kwpaintfill::PaintCoat(coat);
}

// The paint fill's steps, with the band's fade (in picture pixels) when one is given.
void PaintFill(const float* band) {
    if (!DocumentExists()) return;
    const FillArea area = FillSize();
    if (area.empty()) return;
    SaveUndo();
    Hourglass busy;
    Plane M = SelectionCopy(area);
    if (band) FadeAlong(M, band[0], band[1], band[2], band[3]);  // the alpha fader's walk, on the copy
    LayCoat(M, area);
    RedisplayWindow();
}
}  // namespace

void StartupStrokeTexture() {
    if (ReadStrokeTexture(ProgramFile("StrokeTexture.pgm"))) return;
    StrokeTexture.alloc(StrokeW - 1, StrokeH - 1, false);
    StrokeTexture.fill(200);
}

void Buffer_Paint_Click() { PaintFill(nullptr); }

void Buffer_Adjustablepaint_Click() {
    if (!DocumentExists()) return;
    int16_t x1, y1, x2, y2;
    if (!Wait_On_PaintFill_Value(x1, y1, x2, y2)) return;
    const float z = static_cast<float>(App.ZoomPercent) / 100.0f;
    const float band[4] = {x1 / z, y1 / z, x2 / z, y2 / z};
    PaintFill(band);
}

bool Wait_On_PaintFill_Value(int16_t& X1, int16_t& Y1, int16_t& X2, int16_t& Y2) {
    auto to16 = [](float v) { return vb::CInt(std::clamp(v, -32768.0f, 32767.0f)); };
    App.WaitingForClick = 255;
    ++App.LockCount;  // other input keeps away while the events are pumped here
    LineControl& band = Form1::PaintFill_Band;
    band.X1 = App.CursorX, band.Y1 = App.CursorY;
    band.X2 = App.CursorX, band.Y2 = App.CursorY;
    band.Visible = true;
    while (App.WaitingForClick == 255 && !host().Closing()) {
        host().DoEvents();
        if (band.X2 != App.CursorX || band.Y2 != App.CursorY) {
            band.X2 = App.CursorX, band.Y2 = App.CursorY;
        } else {
            host().Sleep(5);  // nothing moved: give the processor back
        }
    }
    --App.LockCount;
    band.Visible = false;
    const bool clicked = App.WaitingForClick != 255;
    App.WaitingForClick = 0;
    X1 = to16(band.X1), Y1 = to16(band.Y1), X2 = to16(band.X2), Y2 = to16(band.Y2);
    return clicked;
}
