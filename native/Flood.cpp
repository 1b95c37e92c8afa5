// The flood's region search: row segments on an explicit stack, each new
// segment found by a run scan to the right that tests sixteen pixels at once.
#include "native/Flood.h"

#include <algorithm>
#include <cstring>
#include <vector>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace kwflood {
namespace {

// What the search reads: the planes, the colour window per channel and the picture.
struct Region {
    const uint8_t *r, *g, *b;
    uint8_t* mask;
    size_t stride;
    int W, H;
    uint8_t lo[3], hi[3];

    bool inside(size_t at) const {
        return mask[at] == 0 && r[at] >= lo[0] && r[at] <= hi[0] && g[at] >= lo[1] && g[at] <= hi[1] &&
               b[at] >= lo[2] && b[at] <= hi[2];
    }
    size_t at(int x, int y) const { return static_cast<size_t>(y) * stride + static_cast<size_t>(x); }
};

// The first column at or after x on row y that does not belong (W at most):
// the run before it is marked. Sixteen pixels are tested at a time.
int ScanRight(const Region& rg, int x, int y) {
    const size_t row = rg.at(0, y);
    const int start = x;
#if defined(__SSE2__)
    const __m128i lr = _mm_set1_epi8(static_cast<char>(rg.lo[0])), hr = _mm_set1_epi8(static_cast<char>(rg.hi[0]));
    const __m128i lg = _mm_set1_epi8(static_cast<char>(rg.lo[1])), hg = _mm_set1_epi8(static_cast<char>(rg.hi[1]));
    const __m128i lb = _mm_set1_epi8(static_cast<char>(rg.lo[2])), hb = _mm_set1_epi8(static_cast<char>(rg.hi[2]));
    const __m128i zero = _mm_setzero_si128();
    // v lies in lo..hi when clamping it to the window leaves it unchanged.
    auto within = [](__m128i v, __m128i lo, __m128i hi) { return _mm_cmpeq_epi8(_mm_min_epu8(_mm_max_epu8(v, lo), hi), v); };
    while (x + 16 <= rg.W) {
        const size_t i = row + static_cast<size_t>(x);
        const __m128i r = _mm_loadu_si128(reinterpret_cast<const __m128i*>(rg.r + i));
        const __m128i g = _mm_loadu_si128(reinterpret_cast<const __m128i*>(rg.g + i));
        const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(rg.b + i));
        const __m128i m = _mm_loadu_si128(reinterpret_cast<const __m128i*>(rg.mask + i));
        __m128i ok = _mm_and_si128(within(r, lr, hr), within(g, lg, hg));
        ok = _mm_and_si128(ok, _mm_and_si128(within(b, lb, hb), _mm_cmpeq_epi8(m, zero)));
        const unsigned bits = static_cast<unsigned>(_mm_movemask_epi8(ok));
        if (bits != 0xFFFFu) {
            x += __builtin_ctz(~bits);
            std::memset(rg.mask + row + start, 255, static_cast<size_t>(x - start));
            return x;
        }
        x += 16;
    }
#endif
    while (x < rg.W && rg.inside(row + static_cast<size_t>(x))) ++x;
    std::memset(rg.mask + row + start, 255, static_cast<size_t>(x - start));
    return x;
}

// A row segment xl..xr whose pixels were reached on row y - dy: row y is to
// be searched under it.
struct Segment {
    int y, xl, xr, dy;
};

class SegmentStack {
public:
    explicit SegmentStack(int H) : H_(H) { stack_.reserve(1024); }
    void push(int y, int xl, int xr, int dy) {
        if (y + dy >= 0 && y + dy < H_) stack_.push_back({y, xl, xr, dy});
    }
    bool pop(Segment& s) {
        if (stack_.empty()) return false;
        s = stack_.back();
        stack_.pop_back();
        s.y += s.dy;
        return true;
    }

private:
    int H_;
    std::vector<Segment> stack_;
};

// One segment: the runs of row s.y that touch s.xl..s.xr are marked, and the
// rows beyond them pushed. Runs that reach past the parent's ends leak back
// toward the parent's row as well (a U turn of the region).
int64_t FillSegment(const Region& rg, SegmentStack& stack, const Segment& s) {
    const int y = s.y, dy = s.dy;
    int64_t reached = 0;
    int x = s.xl;
    while (x >= 0 && rg.inside(rg.at(x, y))) {
        rg.mask[rg.at(x, y)] = 255;
        --x;
    }
    int l = x + 1;
    reached += s.xl - x;
    if (x >= s.xl) {
        l = x;  // the parent's left end is not inside: look further right for a run
    } else {
        if (l < s.xl) stack.push(y, l, s.xl - 1, -dy);
        x = s.xl + 1;
    }
    // x is now the column after the left run (or at the blocked left end).
    bool inRun = x > s.xl;
    for (;;) {
        if (inRun) {
            const int end = x < rg.W ? ScanRight(rg, x, y) : x;
            reached += end - x;
            x = end;
            stack.push(y, l, x - 1, dy);
            if (x > s.xr + 1) stack.push(y, s.xr + 1, x - 1, -dy);
        }
        // Skip to the next pixel under the parent that starts a run.
        for (++x; x <= s.xr && !rg.inside(rg.at(x, y)); ++x) {}
        if (x > s.xr) break;
        l = x;
        inRun = true;
    }
    return reached;
}

// Five-point means of src into dst, neighbours beyond the edge repeating it.
void MeanPass(const uint8_t* src, uint8_t* dst, size_t stride, int W, int H, bool grow) {
    for (int y = 0; y < H; ++y) {
        const uint8_t* c = src + static_cast<size_t>(y) * stride;
        const uint8_t* u = src + static_cast<size_t>(y > 0 ? y - 1 : 0) * stride;
        const uint8_t* d = src + static_cast<size_t>(y < H - 1 ? y + 1 : H - 1) * stride;
        uint8_t* o = dst + static_cast<size_t>(y) * stride;
        auto mean = [&](int x, int left, int right) {
            const unsigned sum = c[x] + u[x] + d[x] + c[left] + c[right];
            return static_cast<uint8_t>((sum + 2) / 5);  // sum / 5 is never half-way
        };
        o[0] = mean(0, 0, std::min(1, W - 1));
        for (int x = 1; x < W - 1; ++x) o[x] = mean(x, x - 1, x + 1);
        if (W > 1) o[W - 1] = mean(W - 1, W - 2, W - 1);
        if (grow)
            for (int x = 0; x < W; ++x) o[x] = o[x] ? 255 : 0;
    }
}
}  // namespace

int64_t floodfrombuff2(int X, int Y, int W, int H, const uint8_t* r, const uint8_t* g, const uint8_t* b,
                       uint8_t* mask, size_t stride, int Tolerance) {
    if (X < 0 || Y < 0 || X >= W || Y >= H || !r || !g || !b || !mask) return 0;
    const int tol = std::clamp(Tolerance, 0, 255);
    Region rg{r, g, b, mask, stride, W, H, {}, {}};
    const size_t seed = rg.at(X, Y);
    const uint8_t c[3] = {r[seed], g[seed], b[seed]};
    for (int k = 0; k < 3; ++k) {
        rg.lo[k] = static_cast<uint8_t>(std::max(c[k] - tol, 0));
        rg.hi[k] = static_cast<uint8_t>(std::min(c[k] + tol, 255));
    }
    if (!rg.inside(seed)) return 0;
    SegmentStack stack(H);
    stack.push(Y, X, X, 1);       // the row below the seed, searched last
    stack.push(Y + 1, X, X, -1);  // the seed's own row, searched first
    int64_t reached = 0;
    Segment s;
    while (stack.pop(s)) reached += FillSegment(rg, stack, s);
    return reached;
}

void SmoothFloodMask(uint8_t* mask, uint8_t* scratch, size_t stride, int W, int H) {
    if (W <= 0 || H <= 0 || !mask || !scratch) return;
    MeanPass(mask, scratch, stride, W, H, true);
    MeanPass(scratch, mask, stride, W, H, false);
}

}  // namespace kwflood
