// The flood's region search against a breadth-first search over the same
// rule, on mazes that punish a scan-line fill that misses a turn, on noisy
// pictures at many tolerances and from every corner; the mask smoothing
// against its two passes written out pixel by pixel.
#include <gtest/gtest.h>

#include <deque>
#include <random>
#include <vector>

#include "native/Flood.h"

namespace {
struct Picture {
    int W, H;
    size_t stride;
    std::vector<uint8_t> r, g, b;
    Picture(int w, int h) : W(w), H(h), stride(static_cast<size_t>(w) + 1) {
        const size_t n = stride * static_cast<size_t>(h + 1);
        r.assign(n, 0), g.assign(n, 0), b.assign(n, 0);
    }
    size_t at(int x, int y) const { return static_cast<size_t>(y) * stride + static_cast<size_t>(x); }
    void set(int x, int y, uint8_t v) { r[at(x, y)] = g[at(x, y)] = b[at(x, y)] = v; }
};

// Four-way breadth-first search: every channel within tol of the seed's.
std::vector<uint8_t> Reference(const Picture& p, int X, int Y, int tol) {
    std::vector<uint8_t> m(p.r.size(), 0);
    const size_t s = p.at(X, Y);
    auto near = [&](size_t i) {
        return std::abs(p.r[i] - p.r[s]) <= tol && std::abs(p.g[i] - p.g[s]) <= tol && std::abs(p.b[i] - p.b[s]) <= tol;
    };
    std::deque<std::pair<int, int>> q{{X, Y}};
    m[s] = 255;
    while (!q.empty()) {
        auto [x, y] = q.front();
        q.pop_front();
        const int dx[4] = {1, -1, 0, 0}, dy[4] = {0, 0, 1, -1};
        for (int k = 0; k < 4; ++k) {
            const int nx = x + dx[k], ny = y + dy[k];
            if (nx < 0 || ny < 0 || nx >= p.W || ny >= p.H) continue;
            const size_t i = p.at(nx, ny);
            if (m[i] || !near(i)) continue;
            m[i] = 255;
            q.push_back({nx, ny});
        }
    }
    return m;
}

void ExpectFloodMatches(const Picture& p, int X, int Y, int tol) {
    std::vector<uint8_t> mask(p.r.size(), 0);
    const int64_t n = kwflood::floodfrombuff2(X, Y, p.W, p.H, p.r.data(), p.g.data(), p.b.data(), mask.data(),
                                              p.stride, tol);
    const std::vector<uint8_t> want = Reference(p, X, Y, tol);
    int64_t count = 0;
    for (int y = 0; y <= p.H; ++y)
        for (int x = 0; x <= p.W; ++x) {
            ASSERT_EQ(mask[p.at(x, y)], want[p.at(x, y)]) << "seed " << X << "," << Y << " tol " << tol << " at " << x << "," << y;
            count += want[p.at(x, y)] ? 1 : 0;
        }
    EXPECT_EQ(n, count);
}

// A square spiral of walls one pixel wide: the corridor turns back on itself
// at every corner, in every direction.
Picture Spiral(int size) {
    Picture p(size, size);
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) p.set(x, y, 200);
    int l = 1, t = 1, r = size - 2, b = size - 2;
    while (l < r && t < b) {
        for (int x = l; x <= r; ++x) p.set(x, t, 0);
        for (int y = t; y <= b; ++y) p.set(r, y, 0);
        for (int x = l; x <= r; ++x) p.set(x, b, 0);
        for (int y = t + 2; y <= b; ++y) p.set(l, y, 0);
        l += 2, t += 2, r -= 2, b -= 2;
    }
    return p;
}
}  // namespace

TEST(Flood, ToleranceZeroFollowsEverySpiralTurnAndStopsAtDiagonals) {
    for (int size : {9, 37, 64}) {
        const Picture p = Spiral(size);
        ExpectFloodMatches(p, 0, 0, 0);                 // the corridor from outside
        ExpectFloodMatches(p, size / 2, size / 2, 0);   // the spiral's centre
        ExpectFloodMatches(p, 1, 1, 0);                 // a wall
    }
    // A diagonal of single pixels is a wall to a four-way search.
    Picture d(20, 20);
    for (int i = 0; i < 20; ++i) d.set(i, i, 90);
    std::vector<uint8_t> mask(d.r.size(), 0);
    kwflood::floodfrombuff2(19, 0, 20, 20, d.r.data(), d.g.data(), d.b.data(), mask.data(), d.stride, 0);
    EXPECT_EQ(mask[d.at(0, 19)], 0);
    EXPECT_EQ(mask[d.at(1, 0)], 255);
}

TEST(Flood, NoisyPicturesAtManyTolerancesFromEveryCorner) {
    std::mt19937 rng(7);
    for (int trial = 0; trial < 6; ++trial) {
        const int W = 5 + static_cast<int>(rng() % 70), H = 3 + static_cast<int>(rng() % 50);
        Picture p(W, H);
        // Blotches rather than white noise, so that regions have shape.
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) {
                const size_t i = p.at(x, y);
                p.r[i] = static_cast<uint8_t>((x / 3 * 37 + y / 2 * 11 + rng() % 9) & 255);
                p.g[i] = static_cast<uint8_t>((x / 4 * 23 + y / 3 * 5 + rng() % 5) & 255);
                p.b[i] = static_cast<uint8_t>(rng() % 4 == 0 ? 250 : 20);
            }
        for (int tol : {0, 3, 12, 40, 128, 255})
            for (auto [x, y] : {std::pair{0, 0}, {W - 1, 0}, {0, H - 1}, {W - 1, H - 1}, {W / 2, H / 2}})
                ExpectFloodMatches(p, x, y, tol);
    }
}

TEST(Flood, SeedsOnTheLastRowAndColumnAndOutsideThePicture) {
    Picture p(40, 30);
    for (int y = 0; y < 30; ++y) p.set(20, y, 99);  // splits the picture in two
    ExpectFloodMatches(p, 39, 29, 0);
    ExpectFloodMatches(p, 20, 29, 0);
    std::vector<uint8_t> mask(p.r.size(), 0);
    for (auto [x, y] : {std::pair{40, 0}, {0, 30}, {-1, 5}, {5, -1}})
        EXPECT_EQ(kwflood::floodfrombuff2(x, y, 40, 30, p.r.data(), p.g.data(), p.b.data(), mask.data(), p.stride, 255), 0);
    for (uint8_t v : mask) ASSERT_EQ(v, 0);
    // The extra column of the planes is never reached, even at full tolerance.
    p.r[p.at(40, 3)] = 0;
    kwflood::floodfrombuff2(0, 0, 40, 30, p.r.data(), p.g.data(), p.b.data(), mask.data(), p.stride, 255);
    for (int y = 0; y <= 30; ++y) EXPECT_EQ(mask[p.at(40, y)], 0);
    for (int x = 0; x <= 40; ++x) EXPECT_EQ(mask[p.at(x, 30)], 0);
}

TEST(Flood, SmoothingGrowsByOnePixelThenSoftensTheRim) {
    const int W = 12, H = 9;
    const size_t stride = W + 1;
    std::vector<uint8_t> mask(stride * (H + 1), 0), scratch(mask.size(), 0);
    auto at = [&](int x, int y) { return static_cast<size_t>(y) * stride + static_cast<size_t>(x); };
    for (int y = 3; y <= 5; ++y)
        for (int x = 4; x <= 7; ++x) mask[at(x, y)] = 255;
    mask[at(0, 0)] = 255;  // a corner pixel: its outside neighbours repeat it
    // The two passes, written out.
    auto pass = [&](const std::vector<uint8_t>& src, bool grow) {
        std::vector<uint8_t> out(src.size(), 0);
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) {
                auto v = [&](int u, int w) { return src[at(std::clamp(u, 0, W - 1), std::clamp(w, 0, H - 1))]; };
                const int sum = v(x, y) + v(x - 1, y) + v(x + 1, y) + v(x, y - 1) + v(x, y + 1);
                int m = static_cast<int>(std::nearbyint(sum / 5.0));
                if (grow && m) m = 255;
                out[at(x, y)] = static_cast<uint8_t>(m);
            }
        return out;
    };
    const std::vector<uint8_t> want = pass(pass(mask, true), false);
    kwflood::SmoothFloodMask(mask.data(), scratch.data(), stride, W, H);
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) ASSERT_EQ(mask[at(x, y)], want[at(x, y)]) << x << "," << y;
    // The grown pixel beyond the old edge is strong but soft, the softening
    // lays a faint touch one further, and nothing reaches beyond that.
    EXPECT_EQ(mask[at(3, 4)], 204);
    EXPECT_EQ(mask[at(2, 4)], 51);
    EXPECT_EQ(mask[at(1, 4)], 0);
    EXPECT_EQ(mask[at(5, 4)], 255);
    EXPECT_GT(mask[at(0, 0)], 0);
}
