// The particle and bristle brushes: the settings and their warnings, single
// steps worked out by hand, and recorded strokes with the generator seeded,
// replayed against checksums of the planes (KW_DUMP=folder writes each
// result as a PPM picture, to look at when a checksum has to change).
#include "tests/canvas/CanvasFixture.h"

#include <cstdlib>
#include <fstream>

#include "brush/Spraxel.h"
#include "colour/Gradients.h"

namespace {
class SpraxelTest : public CanvasTest {
protected:
    void SetUp() override {
        CanvasTest::SetUp();
        using namespace Spraxel;
        Text1.Text = "10";
        Text4.Text = ".5";
        Text10.Text = ".9";
        Text5.Text = "2";
        Text6.Text = "10";
        Text8.Text = "0";
        Text2.Text = "0";
        Text3.Text = "25";
        Text9.Text = "1";
        Text7.Text = "500";
        HProp1.Value = 50;
        HProp2.Value = 0;
        HProp3.Value = 0;
        Hscroll1.Value = 0;
        Combo4.ListIndex = 0;
        Text14.Text = "200";
        Text11.Text = "25";
        // A gradient from red to blue, opaque.
        for (int i = 0; i < 256; ++i) {
            GradientData[0][0][i] = static_cast<uint8_t>(255 - i);
            GradientData[0][1][i] = 40;
            GradientData[0][2][i] = static_cast<uint8_t>(i);
            GradientData[0][3][i] = 255;
        }
    }
    void TearDown() override {
        Spraxel::Check1.Value = 0;
        Spraxel::Check2.Value = 0;
    }
    // FNV-1a over the picture's three planes.
    static uint64_t Checksum() {
        uint64_t h = 1469598103934665603ull;
        for (uint8_t v : Pixels()) h = (h ^ v) * 1099511628211ull;
        return h;
    }
    static void Dump(const std::string& name) {
        const char* dir = std::getenv("KW_DUMP");
        if (!dir) return;
        std::ofstream f(std::string(dir) + "/" + name + ".ppm", std::ios::binary);
        f << "P6\n" << W << " " << H << "\n255\n";
        for (int y = 0; y < H; ++y)
            for (int x = 0; x < W; ++x) f << BufR(x, y) << BufG(x, y) << BufB(x, y);
    }
    static void Scribble() {
        Stroke({{10, 50}, {20, 44}, {30, 36}, {40, 30}, {52, 26}, {64, 26}, {76, 30}, {86, 38}});
    }
};

TEST_F(SpraxelTest, SettingsWarnButKeepTheValues) {
    Spraxel::Text7.Text = "6000";
    Spraxel::Text2.Text = "7";
    Spraxel::Text1.Text = "2000";
    host.ExpectMessage("value for Splits");
    host.ExpectMessage("value for max");
    host.ExpectMessage("value for Emissions");
    Spraxel::Check1.Value = 1;
    EXPECT_TRUE(host.AllAnswered());
    EXPECT_EQ(ParticlesOn, -1);
    EXPECT_EQ(Particles.size(), 6000u);
    EXPECT_EQ(ParticleSet.Splits, 7);
    Spraxel::Check1.Value = 0;
    EXPECT_TRUE(Particles.empty());
    EXPECT_EQ(ParticlesOn, 0);
    Spraxel::Text7.Text = "0";
    Spraxel::Text2.Text = "0";
    Spraxel::Text1.Text = "1";
    Spraxel::Text3.Text = "0";
    Spraxel::Check1.Value = 1;
    EXPECT_EQ(Particles.size(), 1u) << "max particles 0 gives one";
    EXPECT_EQ(Particles[0].Life, 1.0f) << "life span 0 gives one step";
}

TEST_F(SpraxelTest, OneStepByHand) {
    Spraxel::Text9.Text = "0";  // no randomness
    Spraxel::Text5.Text = "0";
    Spraxel::Text1.Text = "1";
    Spraxel::Text4.Text = "2";
    Spraxel::Text10.Text = "1.5";
    Spraxel::Text8.Text = ".5";
    Spraxel::HProp1.Value = 100;
    Spraxel::HProp2.Value = 50;
    Setup_particles();
    Do_Particles(20, 30, 16, 30);  // emits one, carrying the mouse's speed (4, 0)
    ASSERT_EQ(Particles[0].State, 1);
    EXPECT_FLOAT_EQ(Particles[0].VX, 4);
    EXPECT_FLOAT_EQ(Particles[0].X, 20);
    Do_Particles(22, 30, 20, 30);  // steps it: follow half the mouse's (2, 0), gravity 2 * 1.5
    EXPECT_FLOAT_EQ(Particles[0].VX, 5);
    EXPECT_FLOAT_EQ(Particles[0].VY, 3);
    EXPECT_FLOAT_EQ(Particles[0].X, 22.5f) << "drag halves the motion, not the velocity";
    EXPECT_FLOAT_EQ(Particles[0].Y, 31.5f);
    EXPECT_EQ(Particles[1].State, 1) << "and emits the next";
    Spraxel::Text6.Text = "0";
    Spraxel::Text8.Text = "1";
    Setup_particles();
    Do_Particles(20, 30, 16, 30);
    Do_Particles(20, 30, 16, 30);
    EXPECT_FLOAT_EQ(Particles[0].X, 20) << "terminal velocity 0 and drag 1 keep it at the cursor";
    EXPECT_EQ(Particles[0].Age, 1);
}

TEST_F(SpraxelTest, RecordedLineAndBrushStrokesReplay) {
    Spraxel::Check1.Value = 1;
    vb::Randomize(99);
    Scribble();
    Dump("particles_line");
    EXPECT_GT(Painted(), 300);
    const uint64_t line = Checksum();
    MakeTestDocument(W, H);
    vb::Randomize(99);
    Scribble();
    EXPECT_EQ(Checksum(), line) << "the same seed paints the same picture";
    EXPECT_EQ(line, 9301020815773792265ull);
    MakeTestDocument(W, H);
    Spraxel::Combo4.ListIndex = 1;
    Form2::HScroll5.Value = 4;
    Spraxel::Check1.Value = 0;
    Spraxel::Check1.Value = 1;
    vb::Randomize(7);
    Scribble();
    Dump("particles_brush");
    EXPECT_EQ(Checksum(), 12887220630967357075ull);
    EXPECT_EQ(StrokeRefreshOff, 0);
    EXPECT_EQ(Form2::Shape4.FillColor, 0u) << "the primary colour is put back";
}

TEST_F(SpraxelTest, BristlesBleedAndNarrowWithSpeed) {
    Form2::Shape4.FillColor = vb::RGB(0, 0, 200);
    Spraxel::Text14.Text = "40";
    Spraxel::Text11.Text = "12";
    Spraxel::Check2.Value = 1;
    EXPECT_EQ(BristlesOn, -1);
    EXPECT_EQ(Bristles.size(), 41u);
    EXPECT_EQ(Bristles[0].Radius, 0) << "element 0 stays at the cursor";
    vb::Randomize(5);
    Scribble();
    Dump("bristles");
    EXPECT_EQ(Checksum(), 12464630918097331915ull);
    // Bleed 100 takes the colour wholly from the picture before the stroke: white on white.
    MakeTestDocument(W, H);
    Spraxel::HProp3.Value = 100;
    Spraxel::Check2.Value = 0;
    Spraxel::Check2.Value = 1;
    Scribble();
    EXPECT_EQ(Painted(), 0);
    // A move of 255 pixels or more to the right collapses the fan onto the cursor.
    InitBristles(10, 10);
    DrawBristles(300, 20, 10, 10);
    for (const Bristle& b : Bristles) {
        EXPECT_EQ(b.X, 300);
        EXPECT_EQ(b.Y, 20);
    }
}
}  // namespace
