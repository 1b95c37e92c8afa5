// The Spraxelics panel: its controls, the settings read from them with their
// four warnings, the on and off switches and the canvas handlers' part.
#include "brush/Spraxel.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "core/display/Display.h"
#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Host.h"
#include "core/framework/vb.h"

namespace Spraxel {
Form form("Spraxel", "Spraxelics control");
namespace {
// A caption before each text box, sharing its row.
Label& Caption(const char* name, const char* text, int group) {
    static std::vector<std::unique_ptr<Label>> labels;
    labels.push_back(std::make_unique<Label>(form, name, text));
    labels.back()->Group = group;
    return *labels.back();
}
}  // namespace
Label& L0 = Caption("Label1", "Particles per emission", 101);
TextBox Text1(form, "Text1", "10");
Label& L1 = Caption("Label4", "Mass", 102);
TextBox Text4(form, "Text4", ".5");
Label& L2 = Caption("Label10", "Gravity", 103);
TextBox Text10(form, "Text10", ".9");
Label& L3 = Caption("Label5", "Initial velocity", 104);
TextBox Text5(form, "Text5", "2");
Label& L4 = Caption("Label6", "Terminal velocity", 105);
TextBox Text6(form, "Text6", "10");
Label& L5 = Caption("Label8", "Drag", 106);
TextBox Text8(form, "Text8", "0");
Label& L6 = Caption("Label2", "Splits", 107);
TextBox Text2(form, "Text2", "0");
Label& L7 = Caption("Label3", "Life span", 108);
TextBox Text3(form, "Text3", "25");
Label& L8 = Caption("Label9", "Randomize values by ", 109);
TextBox Text9(form, "Text9", "1");
Label& L9 = Caption("Label7", "Max particles", 110);
TextBox Text7(form, "Text7", "500");
Slider Hscroll1(form, "Hscroll1", 0, 7, 0);
Slider HProp1(form, "HProp1", 0, 100, 50);
Slider HProp2(form, "HProp2", 0, 100, 0);
ComboBox Combo4(form, "Combo4");
CheckBox Check1(form, "Check1", "Enabled");
Label& L10 = Caption("Label14", "Bristles", 111);
TextBox Text14(form, "Text14", "200");
Label& L11 = Caption("Label11", "Radius", 112);
TextBox Text11(form, "Text11", "25");
Slider HProp3(form, "HProp3", 0, 100, 0);
CheckBox Check2(form, "Check2", "Enabled");

namespace {
struct Wiring {
    Wiring() {
        // Each text box shares the row of its caption.
        const std::pair<TextBox*, int> rows[] = {{&Text1, 101}, {&Text4, 102},  {&Text10, 103}, {&Text5, 104},
                                                 {&Text6, 105}, {&Text8, 106},  {&Text2, 107},  {&Text3, 108},
                                                 {&Text9, 109}, {&Text7, 110},  {&Text14, 111}, {&Text11, 112}};
        for (auto [t, g] : rows) t->Group = g;
        Text2.ToolTipText = "How many times will this particle split.";
        Hscroll1.Caption.setQuietly("Gradient index");
        HProp1.Caption.setQuietly("Use mouse velocity");
        HProp2.Caption.setQuietly("Particles follow mouse");
        HProp3.Caption.setQuietly("Color bleed");
        Combo4.items = {"Line", "Brush"};
        Combo4.ListIndex.setQuietly(0);
        Combo4.ToolTipText = "Style";
        Check1.ToolTipText = "Particles";
        Check2.ToolTipText = "Bristles";
    }
} wiring;
}  // namespace

void Check1_Click() {
    if (Check1.Value != 0) {
        Setup_particles();
        ParticlesOn = -1;
    } else {
        Particles.clear();
        ParticlesOn = 0;
    }
}

void Check2_Click() {
    if (Check2.Value != 0) {
        Setup_Bristles();
        BristlesOn = -1;
    } else {
        BristlesOn = 0;
    }
}
}  // namespace Spraxel

std::vector<Particle> Particles;
ParticleSettings ParticleSet;
int32_t ParticlesOn = 0, BristlesOn = 0;
int16_t LastParticleX = 0, LastParticleY = 0, LastBristleX = 0, LastBristleY = 0;

namespace {
float Single(const TextBox& t) { return static_cast<float>(vb::Val(t.Text.get())); }
int32_t Long(const TextBox& t) { return vb::CLng(std::clamp(vb::Val(t.Text.get()), -2.0e9, 2.0e9)); }

ParticleSettings ReadParticleSettings() {
    using namespace Spraxel;
    ParticleSettings s;
    s.PerEmission = Single(Text1);
    s.Mass = Single(Text4);
    s.Gravity = Single(Text10);
    s.Initial = Single(Text5);
    s.Terminal = Single(Text6);
    s.Drag = Single(Text8);
    s.Splits = Long(Text2);
    s.Life = Single(Text3);
    if (s.Life <= 0) s.Life = 1.0f;
    s.Randomize = Long(Text9);
    s.MaxParticles = std::max(Long(Text7), 1);
    s.GradientRow = Hscroll1.Value;
    s.UseVelocity = static_cast<float>(HProp1.Value);
    s.Follow = static_cast<float>(HProp2.Value);
    s.BrushStyle = Combo4.Text() == "Brush";
    return s;
}

// Warnings only: the values stay as typed. The first can no longer be reached,
// since the count was held to 1 when read; it is kept with the others.
void WarnAboutParticleSettings(const ParticleSettings& s) {
    if (s.MaxParticles < 1) Kelpwick_MsgBox("The stupidity checker says that Max particles should be greater than 0");
    if (s.Splits >= 6) Kelpwick_MsgBox("The stupidity checker has flagged the value for Splits");
    if (s.MaxParticles > 5000) Kelpwick_MsgBox("The stupidity checker has flagged the value for max");
    if (s.PerEmission > 1000) Kelpwick_MsgBox("The stupidity checker has flagged the value for Emissions");
}

float Zoom() { return static_cast<float>(App.ZoomPercent) / 100.0f; }
int16_t Round16(float v) { return vb::CInt(std::clamp(v, -32768.0f, 32767.0f)); }
}  // namespace

void Setup_particles() {
    ParticleSet = ReadParticleSettings();
    WarnAboutParticleSettings(ParticleSet);
    // A count beyond what memory can hold is refused whole rather than half made.
    constexpr int32_t MostParticles = 10'000'000;
    const int32_t n = std::min(ParticleSet.MaxParticles, MostParticles);
    Particle fresh;
    fresh.Life = ParticleSet.Life;
    fresh.Mass = ParticleSet.Mass;
    fresh.Splits = ParticleSet.Splits;
    fresh.Terminal = ParticleSet.Terminal;
    Particles.assign(static_cast<size_t>(n), fresh);
}

void ProcessParticles(float MouseX, float MouseY, float OldX, float OldY) {
    Do_Particles(MouseX, MouseY, OldX, OldY);
    Draw_Particles();
    RedisplayWindow();
}

void SpraxelMouseDown(float X, float Y) {
    if (BristlesOn == -1) InitBristles(Round16(X / Zoom()), Round16(Y / Zoom()));
}

bool SpraxelMouseMove(int16_t Button, float X, float Y) {
    const float x = X / Zoom(), y = Y / Zoom();
    if (ParticlesOn == -1) {
        if (Button > 0 && !Particles.empty()) ProcessParticles(x, y, LastParticleX, LastParticleY);
        LastParticleX = Round16(x);
        LastParticleY = Round16(y);
        if (Button > 0) return true;
    }
    if (BristlesOn == -1) {
        if (Button > 0) DrawBristles(x, y, LastBristleX, LastBristleY);
        LastBristleX = Round16(x);
        LastBristleY = Round16(y);
        if (Button > 0) return true;
    }
    return false;
}

void SpraxelMouseUp() {
    if (Spraxel::Check1.Value == 0) return;
    RedisplayWindow();
    Setup_particles();
}

void ShowSpraxel() { Show(Spraxel::form, false, &MDIForm1::form); }
