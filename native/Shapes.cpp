// The even-odd polygon fill (an active edge list walked row by row) and the
// ellipse's row spans.
#include "native/Shapes.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace kwshape {
namespace {
struct Edge {
    int firstRow, lastRow;  // rows whose centre line the edge crosses
    double xa, ya, dx, dy;  // upper end and extent, dy > 0
    // Worked out afresh for each row rather than stepped, so that a crossing
    // that falls exactly on a pixel centre falls there every time.
    double at(int y) const { return xa + (y + 0.5 - ya) * dx / dy; }
};

// The edges that cross at least one row centre inside top..bottom, by first row.
std::vector<Edge> BuildEdges(const int32_t* xy, int n, int top, int bottom) {
    std::vector<Edge> edges;
    edges.reserve(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) {
        const int j = (i + 1) % n;
        double xa = xy[2 * i], ya = xy[2 * i + 1], xb = xy[2 * j], yb = xy[2 * j + 1];
        if (ya == yb) continue;
        if (ya > yb) {
            std::swap(xa, xb);
            std::swap(ya, yb);
        }
        // Rows y with ya <= y + 0.5 < yb.
        const int first = static_cast<int>(std::ceil(ya - 0.5)), last = static_cast<int>(std::ceil(yb - 0.5)) - 1;
        const int from = std::max(first, top), to = std::min(last, bottom);
        if (from > to) continue;
        edges.push_back({from, to, xa, ya, xb - xa, yb - ya});
    }
    std::sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) { return a.firstRow < b.firstRow; });
    return edges;
}

// Pixels whose centres lie in [xs, xe), clipped to left..right.
inline void FillSpan(uint8_t* row, double xs, double xe, int left, int right, uint8_t value) {
    const double a = std::ceil(xs - 0.5), b = std::ceil(xe - 0.5) - 1;
    const int from = a < left ? left : static_cast<int>(a);
    const int to = b > right ? right : static_cast<int>(b);
    if (from <= to) std::memset(row + from, value, static_cast<size_t>(to - from + 1));
}
}  // namespace

void PolygonEvenOdd(const int32_t* xy, int n, uint8_t* plane, size_t stride, int left, int top, int right, int bottom,
                    uint8_t value) {
    if (n < 3 || left > right || top > bottom) return;
    std::vector<Edge> edges = BuildEdges(xy, n, top, bottom);
    if (edges.empty()) return;
    std::vector<Edge*> active;
    std::vector<double> xs;
    size_t next = 0;
    for (int y = edges.front().firstRow; y <= bottom; ++y) {
        while (next < edges.size() && edges[next].firstRow == y) active.push_back(&edges[next++]);
        if (active.empty()) {
            if (next == edges.size()) break;
            y = edges[next].firstRow - 1;  // no edge until the next one starts
            continue;
        }
        xs.clear();
        for (const Edge* e : active) xs.push_back(e->at(y));
        std::sort(xs.begin(), xs.end());
        uint8_t* row = plane + static_cast<size_t>(y) * stride;
        for (size_t k = 0; k + 1 < xs.size(); k += 2) FillSpan(row, xs[k], xs[k + 1], left, right, value);
        active.erase(std::remove_if(active.begin(), active.end(), [y](const Edge* e) { return e->lastRow <= y; }),
                     active.end());
    }
}

bool EllipseRowSpan(float cx, float cy, float w, float h, int y, int x0, int x1, int& first, int& last) {
    if (x0 > x1) return false;
    const float fy = static_cast<float>(y);
    auto in = [&](int x) { return InEllipse(static_cast<float>(x), fy, cx, cy, w, h); };
    // The pixel of the range nearest the centre is inside if any is.
    int m = static_cast<int>(std::clamp(std::floor(cx), static_cast<float>(x0), static_cast<float>(x1)));
    if (!in(m)) {
        if (m + 1 <= x1 && in(m + 1)) ++m;
        else return false;
    }
    // The ends start where the row meets the ellipse's circle of radius 128 in
    // scaled units, and are walked to the exact test from there (it is
    // monotone in the distance from the centre, so the run has no holes).
    const float b = (fy - cy) * (255.0f / h);
    const float reach = std::sqrt(std::max(0.0f, 128.0f * 128.0f - b * b)) * (w / 255.0f);
    int lo = static_cast<int>(std::clamp(std::floor(cx - reach), static_cast<float>(x0), static_cast<float>(m)));
    while (lo > x0 && in(lo - 1)) --lo;
    while (!in(lo)) ++lo;  // m at the latest
    int hi = static_cast<int>(std::clamp(std::ceil(cx + reach), static_cast<float>(m), static_cast<float>(x1)));
    while (hi < x1 && in(hi + 1)) ++hi;
    while (!in(hi)) --hi;  // m at the latest
    first = lo;
    last = hi;
    return true;
}

}  // namespace kwshape
