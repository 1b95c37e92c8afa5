// The display pipeline: sizing the screen image, converting the planes through
// the kwpaint routes, the marquee and the title of the frame.
#include "core/display/Display.h"

#include <algorithm>
#include <vector>
#include <cmath>
#include <stdexcept>

#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/document/Buffers.h"
#include "core/display/Form1.h"
#include "core/framework/MixTables.h"
#include "core/framework/vb.h"
#include "native/kwpaint.h"

ScreenBitmapInfo ScreenBitmap;
int16_t DisplayBits = 32;
std::vector<uint32_t> RefreshBuff32;
std::vector<uint16_t> RefreshBuff16;
int RefreshStride32 = 0, RefreshRows32 = 0;
int RefreshStride16 = 0, RefreshRows16 = 0;
uint8_t DisplayBroken = 0, BlitOnly = 0;
int16_t MarqueePhase = 255, MarqueeDelay = 0;
Hook<> DisplayRedrawn;
Hook<> ZoomFollowed;
DisplayChoices Choices;

namespace {
constexpr uint32_t OutsideColour = 0x505050;  // the window beyond the picture's edge

void ReadScreenBitmap() {
    CanvasSurface s = host().GetCanvasSurface();
    ScreenBitmap.Width = s.Width;
    ScreenBitmap.Height = s.Height;
    ScreenBitmap.BitsPixel = s.BitsPixel;
    ScreenBitmap.WidthBytes = s.Width * (s.BitsPixel / 8);
    ScreenBitmap.OriginX = s.OriginX;
    ScreenBitmap.OriginY = s.OriginY;
    DisplayBits = static_cast<int16_t>(s.BitsPixel);
}

bool ScreenImageFits() {
    if (DisplayBits == 16) return RefreshStride16 >= ScreenBitmap.Width && RefreshRows16 >= ScreenBitmap.Height;
    if (DisplayBits == 24)
        return static_cast<long long>(RefreshStride32) * 4 >= static_cast<long long>(ScreenBitmap.Width) * 3 &&
               RefreshRows32 >= ScreenBitmap.Height;
    return RefreshStride32 >= ScreenBitmap.Width && RefreshRows32 >= ScreenBitmap.Height;
}
}  // namespace

RefreshRoute ChooseRefreshRoute(int bits, int zoom, bool mixing, bool force15) {
    if (bits == 24) return RefreshRoute::Zoom24;
    if (bits == 16) {
        if (zoom == 100) return mixing ? RefreshRoute::FastMix16 : RefreshRoute::Fast16;
        return force15 ? RefreshRoute::Zoom15 : RefreshRoute::Zoom16;
    }
    if (zoom == 100) return mixing ? RefreshRoute::FastMix32 : RefreshRoute::Fast32;
    return RefreshRoute::Zoom32;
}


void DemensionRefreshBuff() {
    DisplayBroken = 0;
    try {
        ReadScreenBitmap();
        int bw = ScreenBitmap.WidthBytes, h = ScreenBitmap.Height;
        RefreshBuff32.clear();
        RefreshBuff16.clear();
        RefreshStride32 = RefreshRows32 = RefreshStride16 = RefreshRows16 = 0;
        if (bw < 0 || h < 0) throw std::runtime_error("surface");
        if (DisplayBits == 32 || DisplayBits == 24) {
            // A 24-bit surface gets a third more than it needs: deliberate headroom.
            int cols = DisplayBits == 32 ? bw / 4 : bw / 3;
            RefreshBuff32.assign(static_cast<size_t>(cols) * static_cast<size_t>(h), 0);
            RefreshStride32 = cols;
            RefreshRows32 = h;
        } else if (DisplayBits == 16) {
            int cols = bw / 2;
            RefreshBuff16.assign(static_cast<size_t>(cols) * static_cast<size_t>(h), 0);
            RefreshStride16 = cols;
            RefreshRows16 = h;
        } else {
            throw std::runtime_error("depth");
        }
    } catch (...) {
        DisplayBroken = 255;
        Kelpwick_MsgBox("An internal error has occered.  Attempting to compensate");
    }
}

namespace {
// Converts window rectangle (l, t, r, b) of the zoomed picture into the screen image.
void Convert(int l, int t, int r, int b) {
    // The planes' own bounds give the stride: the size text may run ahead of them
    // while a dialog is open, and the picture must not shear meanwhile.
    int W = BufR.ubX(), H = BufR.ubY();
    if (BufR.empty() || W <= 0 || H <= 0) return;
    int z = App.ZoomPercent;
    int ox = ScreenBitmap.OriginX, oy = ScreenBitmap.OriginY;
    const uint8_t* mix = Choices.mixTable;
    RefreshRoute route = ChooseRefreshRoute(DisplayBits, z, mix != nullptr, Choices.force15);
    uint32_t* d32 = RefreshBuff32.data();
    uint16_t* d16 = RefreshBuff16.data();
    int s32 = RefreshStride32, r32 = RefreshRows32, s16 = RefreshStride16, r16 = RefreshRows16;
    switch (route) {
        case RefreshRoute::Fast32:
            kwpaint::FastRefresh32(d32, l, t, r, b, BufR.data(), BufG.data(), BufB.data(), s32, r32, W, H, ox, oy);
            break;
        case RefreshRoute::FastMix32:
            kwpaint::FastRefresh_Mix32(d32, l, t, r, b, BufR.data(), BufG.data(), BufB.data(), SwapR.data(),
                                       SwapG.data(), SwapB.data(), mix, s32, r32, W, H, ox, oy);
            break;
        case RefreshRoute::Zoom32:
            kwpaint::RefreshFromBuffs(d32, l, t, r, b, BufR.data(), BufG.data(), BufB.data(), s32, r32, W, H, z, ox, oy);
            break;
        case RefreshRoute::Zoom24:
            kwpaint::RefreshFromBuffs24(reinterpret_cast<uint8_t*>(d32), l, t, r, b, BufR.data(), BufG.data(),
                                        BufB.data(), s32 * 4, r32, W, H, z, ox, oy);
            break;
        case RefreshRoute::Fast16:
            kwpaint::FastRefresh16(d16, l, t, r, b, BufR.data(), BufG.data(), BufB.data(), s16, r16, W, H, ox, oy);
            break;
        case RefreshRoute::FastMix16:
            kwpaint::FastRefresh_Mix16(d16, l, t, r, b, BufR.data(), BufG.data(), BufB.data(), SwapR.data(),
                                       SwapG.data(), SwapB.data(), mix, s16, r16, W, H, ox, oy);
            break;
        case RefreshRoute::Zoom16:
            kwpaint::RefreshFromBuffs16(d16, l, t, r, b, BufR.data(), BufG.data(), BufB.data(), s16, r16, W, H, z, ox, oy);
            break;
        case RefreshRoute::Zoom15:
            kwpaint::RefreshFromBuffs15(d16, l, t, r, b, BufR.data(), BufG.data(), BufB.data(), s16, r16, W, H, z, ox, oy);
            break;
    }
}

void PaintOutside() {
    if (DisplayBits == 16 || RefreshBuff32.empty()) return;
    long long zw = static_cast<long long>(BufR.ubX()) * App.ZoomPercent / 100;
    long long zh = static_cast<long long>(BufR.ubY()) * App.ZoomPercent / 100;
    if (ScreenBitmap.OriginX + ScreenBitmap.Width <= zw && ScreenBitmap.OriginY + ScreenBitmap.Height <= zh) return;
    std::fill(RefreshBuff32.begin(), RefreshBuff32.end(), OutsideColour);
}
}  // namespace


void RedisplayWindow() {
    if (DisplayBroken == 255) return;
    ReadScreenBitmap();
    if (!ScreenImageFits()) {
        DemensionRefreshBuff();
        if (DisplayBroken == 255) return;
    }
    if (BlitOnly != 1) {
        PaintOutside();
        // Origin and size are window pixels; at 100 % they are picture pixels too.
        int l = ScreenBitmap.OriginX, t = ScreenBitmap.OriginY;
        Convert(l, t, l + ScreenBitmap.Width, t + ScreenBitmap.Height);
    }
    host().CanvasImageChanged(0, 0, ScreenBitmap.Width, ScreenBitmap.Height);
    if (App.AlphaOff == 0) DisplayMarquee();
    DisplayRedrawn.raise();
}

void RefreshRect(int left, int top, int right, int bottom) {
    if (DisplayBroken == 255) return;
    ReadScreenBitmap();
    if (!ScreenImageFits()) return RedisplayWindow();
    int z = App.ZoomPercent;
    int l = left, t = top, r = right, b = bottom;
    if (z != 100 || DisplayBits == 24) {
        l = static_cast<int>(static_cast<long long>(left) * z / 100);
        t = static_cast<int>(static_cast<long long>(top) * z / 100);
        r = static_cast<int>((static_cast<long long>(right) * z + 99) / 100);
        b = static_cast<int>((static_cast<long long>(bottom) * z + 99) / 100);
    }
    Convert(l, t, r, b);
    int ox = ScreenBitmap.OriginX, oy = ScreenBitmap.OriginY;
    host().CanvasImageChanged(std::max(l - ox, 0), std::max(t - oy, 0), std::min(r - ox, ScreenBitmap.Width),
                              std::min(b - oy, ScreenBitmap.Height));
}

void ResizeWindow() {
    if (DisplayBroken == 255) return;
    long long w = static_cast<long long>(BufferWidth()) * App.ZoomPercent / 100;
    long long h = static_cast<long long>(BufferHeight()) * App.ZoomPercent / 100;
    host().SetCanvasWindowSize(static_cast<int>(std::max(0LL, w)), static_cast<int>(std::max(0LL, h)));
}

namespace {
// The picture point held under the cursor by the last zoom. The view's origin is
// a whole window pixel, so the point it shows drifts by a fraction at each step;
// while the cursor and the view stay as that zoom left them, the exact point is
// taken again, and a run of steps in and out comes back where it began.
struct ZoomAnchor {
    double vx = -1, vy = -1, px = 0, py = 0;
    int originX = -1, originY = -1, zoom = 0;
} anchor;
}  // namespace

void ZoomAbout(int percent, double vx, double vy) {
    if (percent == App.ZoomPercent || percent <= 0) return;
    const CanvasSurface s = host().GetCanvasSurface();
    double px = (s.OriginX + vx) * 100.0 / App.ZoomPercent;
    double py = (s.OriginY + vy) * 100.0 / App.ZoomPercent;
    if (anchor.vx == vx && anchor.vy == vy && anchor.originX == s.OriginX && anchor.originY == s.OriginY &&
        anchor.zoom == App.ZoomPercent) {
        px = anchor.px;
        py = anchor.py;
    }
    App.ZoomPercent = percent;
    ResizeWindow();
    host().ScrollCanvasTo(static_cast<int>(std::lround(px * percent / 100.0 - vx)),
                          static_cast<int>(std::lround(py * percent / 100.0 - vy)));
    const CanvasSurface now = host().GetCanvasSurface();
    anchor = {vx, vy, px, py, now.OriginX, now.OriginY, percent};
    ZoomFollowed.raise();
    RedisplayWindow();
}

void ShowRestoredPicture(bool alphaOn) {
    if (alphaOn) InitMarquee();
    RedisplayWindow();
}

void Refresh_Click() {
    RedisplayWindow();
}

// The outline of the selection: a clear pixel beside a selected one (left,
// right, above or below) takes the diagonal pattern value (x * 16 + y) mod 255,
// every other pixel 0. The pattern row steps by one from row to row, so each
// row is two passes the compiler can do sixteen pixels at a time.
void InitMarquee() {
    int W = std::min(BufferWidth(), BufA.ubX()), H = std::min(BufferHeight(), BufA.ubY());
    if (BufA.empty() || MarqueePlane.empty() || W < 3) return;
    std::vector<uint8_t> pattern(static_cast<size_t>(W));
    for (int x = 1; x <= W - 2; ++x) pattern[static_cast<size_t>(x)] = static_cast<uint8_t>((x * 16 + 1) % 255);
    for (int y = 1; y <= H - 1; ++y) {
        const uint8_t* __restrict up = BufA.row(y - 1);
        const uint8_t* __restrict row = BufA.row(y);
        const uint8_t* __restrict down = BufA.row(y + 1);
        uint8_t* __restrict out = MarqueePlane.row(y);
        uint8_t* __restrict pat = pattern.data();
        // Without branches: a mask of all ones where the pixel is an edge.
        for (int x = 1; x <= W - 2; ++x) {
            const uint8_t around = static_cast<uint8_t>(row[x + 1] | down[x] | row[x - 1] | up[x]);
            const uint8_t edge = static_cast<uint8_t>((row[x] == 0) & (around != 0));
            out[x] = static_cast<uint8_t>(pat[x] & static_cast<uint8_t>(0 - edge));
        }
        for (int x = 1; x <= W - 2; ++x) pat[x] = static_cast<uint8_t>((pat[x] + 1) * (pat[x] != 254));
    }
}

void DisplayMarquee() {
    if (MarqueeDelay > 0) return;
    MarqueePhase = static_cast<int16_t>(MarqueePhase - 32);
    if (MarqueePhase < 0) MarqueePhase = 255;
    if (DisplayBroken == 255 || MarqueePlane.empty() || DisplayBits != 32 || RefreshBuff32.empty()) return;
    bool ran = Form1::Timer1.TimerEnabled;
    Form1::Timer1.TimerEnabled = false;
    int W = MarqueePlane.ubX(), H = MarqueePlane.ubY();
    kwpaint::DispMarquee(RefreshBuff32.data(), RefreshStride32, RefreshRows32, MarqueePlane.data(), W, H,
                         App.ZoomPercent, MarqueePhase, ScreenBitmap.OriginX, ScreenBitmap.OriginY);
    host().CanvasImageChanged(0, 0, ScreenBitmap.Width, ScreenBitmap.Height);
    if (ran) Form1::Timer1.TimerEnabled = true;
}
