// Moving the selection with wrap-around: ctrl drags and shift with the arrows.
#include <algorithm>
#include <cstdlib>
#include <vector>

#include "canvas/CanvasInput.h"
#include "core/document/Buffers.h"

namespace {
// The source index of a wrapped move: s >= 0 wraps with mod n; a negative s
// reads n - (|s| mod n), so a whole multiple of n lands on the extra row or
// column n of the plane.
int WrapSource(int i, int shift, int n) {
    const long long s = static_cast<long long>(i) - shift;
    if (s >= 0) return static_cast<int>(s % n);
    return n - static_cast<int>((-s) % n);
}
}  // namespace

void NudgeAlpha(int DX, int DY) {
    if (!DocumentExists() || MarqueePlane.empty()) return;
    const int W = std::min({BufferWidth(), BufA.ubX(), MarqueePlane.ubX()});
    const int H = std::min({BufferHeight(), BufA.ubY(), MarqueePlane.ubY()});
    if (W <= 0 || H <= 0) return;
    Plane a, m;
    a.copyFrom(BufA);
    m.copyFrom(MarqueePlane);
    std::vector<int> sx(static_cast<size_t>(W));
    for (int x = 0; x < W; ++x) sx[static_cast<size_t>(x)] = WrapSource(x, DX, W);
    for (int y = 0; y < H; ++y) {
        const int sy = WrapSource(y, DY, H);
        const uint8_t* ar = a.row(sy);
        const uint8_t* mr = m.row(sy);
        uint8_t* ad = BufA.row(y);
        uint8_t* md = MarqueePlane.row(y);
        for (int x = 0; x < W; ++x) {
            ad[x] = ar[sx[static_cast<size_t>(x)]];
            md[x] = mr[sx[static_cast<size_t>(x)]];
        }
    }
}
