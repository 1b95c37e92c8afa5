// Recorded strokes replayed with a fixed seed: presses, moves and releases through
// the handlers, the planes compared with checksums recorded once and reviewed
// as pictures (set KW_REPLAY_RECORD to print the checksums of a new recording).
#include "tests/canvas/CanvasFixture.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ostream>
#include <string>

namespace {
uint64_t Fnv1a(const std::vector<uint8_t>& v) {
    uint64_t h = 1469598103934665603ull;
    for (uint8_t b : v) h = (h ^ b) * 1099511628211ull;
    return h;
}

// A picture with something in it for the modes to work on: diagonal colour bands.
void Background() {
    for (int y = 0; y < BufferHeight(); ++y)
        for (int x = 0; x < BufferWidth(); ++x) {
            BufR(x, y) = static_cast<uint8_t>((x * 5 + y * 2) % 256);
            BufG(x, y) = static_cast<uint8_t>(((x + y) / 8 % 2) * 180 + 40);
            BufB(x, y) = static_cast<uint8_t>(255 - y * 3);
            SwapR(x, y) = static_cast<uint8_t>((x / 6 + y / 6) % 2 * 255);
            SwapG(x, y) = 90;
            SwapB(x, y) = static_cast<uint8_t>(x * 2);
        }
}

// A wavy path across the picture, as a hand would move.
std::vector<std::pair<float, float>> Path(float y0, float amplitude, int points) {
    std::vector<std::pair<float, float>> p;
    for (int i = 0; i < points; ++i) {
        float t = static_cast<float>(i) / (points - 1);
        p.emplace_back(6 + t * 84, y0 + amplitude * std::sin(t * 7.0f));
    }
    return p;
}

// A stock brush, its anti-aliasing, the panel values set in this order, the
// primary colour, and how the second stroke differs from the first.
struct Replay {
    const char* name;
    int stock;
    OptionButton* antiAlias;
    std::vector<std::pair<Prop<int>*, int>> set;
    uint32_t colour;
    uint64_t checksum;
    int secondButton = MouseButton::Left;
    int secondMode = -1;  // the list position of the painting mode of the second stroke; -1 keeps it
};
void PrintTo(const Replay& r, std::ostream* os) { *os << r.name; }

namespace F = Form2;
namespace O = BrushOptions;
const Replay replays[] = {
    {"Airbrush", 2, &O::Option3, {{&F::HScroll5.Value, 40}, {&F::HScroll4.Value, 100}, {&F::slider1.Value, 3}},
     vb::RGB(200, 30, 60), 0xf9cf0839702931e1ull},
    {"Jitter", 3, &O::Option2,
     {{&F::HScroll5.Value, 20}, {&F::slider1.Value, 4}, {&O::Hscroll1.Value, 10}, {&O::Hscroll4.Value, 10},
      {&O::Hscroll3.Value, 90}, {&O::Hscroll2.Value, 40}, {&O::hscroll6.Value, 20}, {&O::Hscroll7.Value, 20},
      {&O::Check1.Value, 1}},
     vb::RGB(20, 160, 60), 0x075be38adf9c0390ull, MouseButton::Right},
    {"PaperMultiply", 4, &O::Option2,
     {{&F::HScroll5.Value, 30}, {&F::HScroll4.Value, 220}, {&F::HScroll6.Value, 150}, {&F::Check1.Value, 1},
      {&F::Check2.Value, 1}, {&F::Combo4.ListIndex, 3}},
     vb::RGB(90, 60, 200), 0xd2623f4bc8344aacull},
    {"Smear", 3, &O::Option3, {{&F::HScroll5.Value, 30}, {&F::slider1.Value, 2}, {&F::Combo4.ListIndex, 9}},
     vb::RGB(90, 60, 200), 0x8fa0241ab46b107dull},
    {"BleedDryoutSpeed", 6, &O::Option2,
     {{&F::HScroll5.Value, 50}, {&F::HScroll4.Value, 190}, {&F::slider1.Value, 3}, {&O::Hscroll5.Value, 150},
      {&O::Hscroll8.Value, 20}, {&O::hscroll9.Value, -18}},
     vb::RGB(240, 200, 20), 0x34ffb491262dc23bull},
    {"ScreenRubthrough", 9, &O::Option3, {{&F::HScroll5.Value, 44}, {&F::Combo4.ListIndex, 5}},
     vb::RGB(0, 80, 160), 0xa3daa3217f5aa7f8ull, MouseButton::Left, 7},
};

// Each replay starts from the canvas tests' neutral brush on the banded
// picture, with the generator seeded the same way.
class ReplayTest : public CanvasTest, public ::testing::WithParamInterface<Replay> {
protected:
    void SetUp() override {
        CanvasTest::SetUp();
        const Replay& r = GetParam();
        F::HScroll4.Value = 255;
        F::slider1.Value = 1;
        Background();
        PickStockBrush(r.stock);
        r.antiAlias->Value = true;
        for (auto [value, v] : r.set) *value = v;
        F::Shape4.FillColor = r.colour;
        vb::Randomize(2024);
    }
};
}  // namespace

TEST_P(ReplayTest, ReplaysToItsChecksum) {
    const Replay& r = GetParam();
    Stroke(Path(20, 10, 25));
    if (r.secondMode >= 0) F::Combo4.ListIndex = r.secondMode;
    Stroke(Path(44, -12, 40), r.secondButton);
    const uint64_t sum = Fnv1a(Pixels());
    if (std::getenv("KW_REPLAY_RECORD")) std::printf("%s 0x%016llxull\n", r.name, static_cast<unsigned long long>(sum));
    else EXPECT_EQ(sum, r.checksum);
}

INSTANTIATE_TEST_SUITE_P(Recorded, ReplayTest, ::testing::ValuesIn(replays),
                         [](const ::testing::TestParamInfo<Replay>& info) { return std::string(info.param.name); });

namespace {
// A stroke of a pen whose pressure rises from light to full along the path;
// the pressure of each position is set before its event, as the view does.
void PenStroke(const std::vector<std::pair<float, float>>& pts) {
    for (size_t i = 0; i < pts.size(); ++i) {
        App.Pressure = 0.15f + 0.85f * static_cast<float>(i) / static_cast<float>(pts.size() - 1);
        const auto [x, y] = pts[i];
        if (i == 0) {
            Form1::Form_MouseMove(0, 0, x, y);
            Form1::Form_MouseDown(MouseButton::Left, 0, x, y);
        } else {
            Form1::Form_MouseMove(MouseButton::Left, 0, x, y);
        }
    }
    Form1::Form_MouseUp(MouseButton::Left, 0, pts.back().first, pts.back().second);
    App.Pressure = 1;
}

class PenTest : public CanvasTest {
protected:
    void SetUp() override {
        CanvasTest::SetUp();
        Background();
        PickStockBrush(2);
        O::Option3.Value = true;
        F::HScroll5.Value = 40;
        F::slider1.Value = 3;
        F::Shape4.FillColor = vb::RGB(200, 30, 60);
        vb::Randomize(2024);
    }
    void TearDown() override {
        O::Check2.Value = 1;
        O::Check3.Value = 1;
        App.Pressure = 1;
    }
    // Pixels changed in columns [x0, x1) against the banded picture.
    static int Changed(const std::vector<uint8_t>& before, int x0, int x1) {
        const std::vector<uint8_t> now = Pixels();
        int n = 0;
        for (size_t i = 0; i < now.size(); ++i) {
            const int x = static_cast<int>(i % static_cast<size_t>(BufferWidth()));
            n += x >= x0 && x < x1 && now[i] != before[i];
        }
        return n;
    }
};
}  // namespace

// Pressure switched off, or a mouse's full pressure, gives the mouse's pixels bit
// for bit; the recorded replays above run with both boxes on at full pressure.
TEST_F(PenTest, FullPressureOrBoxesOffPaintAsTheMouse) {
    const auto path = Path(30, 10, 30);
    Stroke(path);
    const std::vector<uint8_t> mouse = Pixels();
    Background();
    vb::Randomize(2024);
    O::Check2.Value = 0;
    O::Check3.Value = 0;
    PenStroke(path);
    EXPECT_EQ(Pixels(), mouse);
}

TEST_F(PenTest, ALightPenPaintsLessAndReplaysToItsChecksum) {
    const std::vector<uint8_t> before = Pixels();
    PenStroke(Path(30, 10, 30));
    // Light at the start, full at the end: less paint on the left than on the right.
    EXPECT_LT(Changed(before, 0, 30), Changed(before, 66, 96));
    const uint64_t sum = Fnv1a(Pixels());
    if (std::getenv("KW_REPLAY_RECORD")) {
        std::printf("Pen 0x%016llxull\n", static_cast<unsigned long long>(sum));
        // The picture for review: a binary PPM of the three planes.
        if (FILE* f = std::fopen("pen_stroke.ppm", "wb")) {
            std::fprintf(f, "P6 %d %d 255\n", BufferWidth(), BufferHeight());
            for (int y = 0; y < BufferHeight(); ++y)
                for (int x = 0; x < BufferWidth(); ++x) {
                    const uint8_t px[3] = {BufR(x, y), BufG(x, y), BufB(x, y)};
                    std::fwrite(px, 1, 3, f);
                }
            std::fclose(f);
        }
    } else {
        EXPECT_EQ(sum, 0xb4d106bc2aaefec9ull);  // reviewed: thin and faint at the left, full on the right
    }
}
