// The custom brush: making its planes, cutting it from the picture (with the
// colour key), its modes, its thumbnails and the stamp of each dab.
#include "brush/CustomBrush.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "brush/BrushMask.h"
#include "brush/BrushOptions.h"
#include "brush/BrushState.h"
#include "colour/Paper.h"
#include "core/document/Buffers.h"
#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/framework/Codes.h"
#include "core/framework/MixTables.h"
#include "core/framework/vb.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "native/CustomBrushKernels.h"

int16_t BrushMatte = 0;
int32_t BlitX = 0, BlitY = 0;
uint8_t BrushRebuild = 0;

namespace BrushKey {
Form form("BrushKey", "Brush key");
Slider Hscroll1(form, "Hscroll1", 0, 255, 0);
Slider Hscroll2(form, "Hscroll2", 0, 255, 0);
CheckBox Check1(form, "Check1", "Invert");
CheckBox Check2(form, "Check2", "Keep alpha");
namespace {
struct Wiring {
    Wiring() {
        Hscroll1.Caption.setQuietly("Tolerance");
        Hscroll1.ToolTipText = "How far from the secondary colour a pixel is still keyed out";
        Hscroll2.Caption.setQuietly("Softness");
        Hscroll2.ToolTipText = "Width of the soft edge between keyed out and kept";
        Check1.ToolTipText = "Keep the key colour and drop the rest";
        Check2.ToolTipText = "Take the brush's coverage from the picture's alpha";
    }
} wiring;
}  // namespace
}  // namespace BrushKey

bool BrushExists() { return CustomBrushUsable() && BrushA.ubX() == BrushR.ubX() && BrushA.ubY() == BrushR.ubY(); }

void BrushChanged() {
    PaintBrushThumbnail(Form2::Picture58);
    Picture1_Paint();
}

int16_t CreateEmptyBrush(int& Width, int& Height) {
    if (Width <= 0 || Height <= 0) return -1;
    if (BrushRebuild != 255 && Form2::Combo4.ListIndex != 0) Form2::Combo4.ListIndex = 0;
    // A brush no bigger than a 16-bit size; the planes are all made before any is swapped in.
    Width = std::min(Width, 32767);
    Height = std::min(Height, 32767);
    try {
        Plane planes[4];
        for (Plane& p : planes) p.alloc(Width, Height);
        BrushR.swap(planes[0]);
        BrushG.swap(planes[1]);
        BrushB.swap(planes[2]);
        BrushA.swap(planes[3]);
        BrushWidth = static_cast<int16_t>(Width);
        BrushHeight = static_cast<int16_t>(Height);
    } catch (const std::bad_alloc&) {
        Kelpwick_MsgBox("Not enough memory for a brush of this size.");
        return -1;
    }
    Form2::Picture58.Visible = true;
    MDIForm1::Cust_Mode_Color.Enabled = true;
    MDIForm1::Cust_Mode_Matte.Enabled = true;
    if (BrushRebuild != 255) MDIForm1::Cust_Mode_Color_Click();
    return 0;
}

namespace {
// The rectangle put in order and clipped to the picture; false when nothing is left.
bool ClipRectangle(int& X1, int& Y1, int& X2, int& Y2) {
    if (X1 > X2) std::swap(X1, X2);
    if (Y1 > Y2) std::swap(Y1, Y2);
    const int W = std::min(BufferWidth(), BufR.ubX()), H = std::min(BufferHeight(), BufR.ubY());
    X1 = std::clamp(X1, 0, W);
    X2 = std::clamp(X2, 0, W);
    Y1 = std::clamp(Y1, 0, H);
    Y2 = std::clamp(Y2, 0, H);
    return DocumentExists() && X2 > X1 && Y2 > Y1;
}

// The picture's colour planes into the brush from (X1, Y1).
void CopyColour(int X1, int Y1) {
    for (int v = 0; v < BrushHeight; ++v)
        for (int u = 0; u < BrushWidth; ++u) {
            BrushR(u, v) = BufR(X1 + u, Y1 + v);
            BrushG(u, v) = BufG(X1 + u, Y1 + v);
            BrushB(u, v) = BufB(X1 + u, Y1 + v);
        }
}

// The picture's alpha is the coverage; with the alpha switched off the whole rectangle counts.
void CopyAlpha(int X1, int Y1) {
    for (int v = 0; v < BrushHeight; ++v)
        for (int u = 0; u < BrushWidth; ++u) BrushA(u, v) = BufA(X1 + u, Y1 + v) | App.AlphaOff;
}

// Coverage from the distance to the key colour, through the curve.
void KeyOut() {
    uint8_t curve[256];
    BuildKeyCurve(BrushKey::Hscroll1.Value, BrushKey::Hscroll2.Value, BrushKey::Check1.Value != 0, curve);
    const uint32_t key = Form2::Shape1.FillColor;
    const int kr = vb::RedOf(key), kg = vb::GreenOf(key), kb = vb::BlueOf(key);
    for (int v = 0; v < BrushHeight; ++v)
        for (int u = 0; u < BrushWidth; ++u) {
            const double dr = std::abs(BrushR(u, v) - kr), dg = std::abs(BrushG(u, v) - kg),
                         db = std::abs(BrushB(u, v) - kb);
            const double p = ((255 - dr) / 255) * ((255 - dg) / 255) * ((255 - db) / 255);
            const int q = std::clamp(255 - vb::CInt(p * 255), 0, 255);
            BrushA(u, v) = curve[q];
        }
}
}  // namespace

// The key curve is a smoothstep: nothing below the tolerance, everything
// beyond tolerance + softness, and between them 3t^2 - 2t^3, which meets both
// flat ends without a kink, so soft edges keep no visible step.
void BuildKeyCurve(int tolerance, int softness, bool invert, uint8_t curve[256]) {
    for (int q = 0; q < 256; ++q) {
        double c;
        if (q <= tolerance) c = 0;
        else if (q >= tolerance + softness) c = 1;
        else {
            const double t = static_cast<double>(q - tolerance) / softness;
            c = t * t * (3 - 2 * t);
        }
        const int v = vb::CInt(c * 255);
        curve[q] = static_cast<uint8_t>(invert ? 255 - v : v);
    }
}

void CopyNewBrush(int X1, int Y1, int X2, int Y2) {
    if (!ClipRectangle(X1, Y1, X2, Y2)) return;
    int w = X2 - X1, h = Y2 - Y1;
    if (CreateEmptyBrush(w, h) != 0) return;
    App.CustomBrushOn = -1;
    CopyColour(X1, Y1);
    CopyAlpha(X1, Y1);
    BrushChanged();
}

void CustomBrushSelect(int X1, int Y1, int X2, int Y2) {
    if (!ClipRectangle(X1, Y1, X2, Y2)) return;
    int w = X2 - X1, h = Y2 - Y1;
    if (CreateEmptyBrush(w, h) != 0) return;
    CopyColour(X1, Y1);
    if (!BrushKey::form.Visible || BrushKey::Check2.Value != 0) CopyAlpha(X1, Y1);
    else KeyOut();
    BrushChanged();
}

int16_t CheckBrushAlpha() {
    if (BrushA.empty()) return 0;
    const uint8_t* a = BrushA.data();
    return std::any_of(a, a + BrushA.count(), [](uint8_t v) { return v > 0; }) ? 1 : 0;
}

namespace MDIForm1 {
void Cust_Mode_Color_Click() {
    BrushMatte = 0;
    Cust_Mode_Color.Checked = true;
    Cust_Mode_Matte.Checked = false;
}

void Cust_Mode_Matte_Click() {
    BrushMatte = 1;
    Cust_Mode_Color.Checked = false;
    Cust_Mode_Matte.Checked = true;
}

// The selection's box when the alpha masks, else the whole picture.
void Cust_Copy_Click() {
    if (!DocumentExists()) return;
    const int W = BufferWidth(), H = BufferHeight();
    int left = W, top = H, right = -1, bottom = -1;
    if (App.AlphaOff == 0) {
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x)
                if (BufA(x, y) != 0) {
                    left = std::min(left, x), right = std::max(right, x);
                    top = std::min(top, y), bottom = std::max(bottom, y);
                }
    }
    if (right < 0) left = 0, top = 0, right = W - 1, bottom = H - 1;
    CopyNewBrush(left, top, right + 1, bottom + 1);
}

void Cust_Free_Click() {
    if (Kelpwick_QuestionBox("Free custom brush?") != 1) return;
    for (Plane* p : {&BrushR, &BrushG, &BrushB, &BrushA}) p->free();
    BrushWidth = BrushHeight = 0;
    App.CustomBrushOn = 0;
    Form2::Picture58.Visible = false;
    Cust_Mode_Color.Enabled = false;
    Cust_Mode_Matte.Enabled = false;
    Picture1_Paint();
}
}  // namespace MDIForm1

namespace Form2 {
void Picture58_Click() {
    if (!BrushExists()) return;
    App.CustomBrushOn = -1;
    Picture1_Paint();
}
}  // namespace Form2

void PaintBrushThumbnail(PictureBox& p) {
    p.Cls(0xFFFFFF);
    if (BrushExists()) {
        for (int a = 0; a <= 39; ++a)
            for (int b = 0; b <= 39; ++b) {
                const int u = vb::CInt(a * (BrushWidth - 1) / 39.0), v = vb::CInt(b * (BrushHeight - 1) / 39.0);
                const double c = BrushA(u, v) / 256.0;
                auto over = [&](int colour) { return vb::CInt(colour * c + (1 - c) * 255); };
                if (a < p.Width && b < p.Height) p.PSet(a, b, vb::RGB(over(BrushR(u, v)), over(BrushG(u, v)), over(BrushB(u, v))));
            }
    }
    p.Refresh();
}

void CustomBrushBack() {
    if (BrushWidth <= 0) return;
    App.CustomBrushOn = -1;
    Picture1_Paint();
}
