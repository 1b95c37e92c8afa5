// The particle brush: one step of every live particle and one emission per
// mouse move, and the drawing of each step's path, as an anti-aliased line or
// as a stroke of the natural brush, in the gradient's colour for its age.
#include <algorithm>
#include <cmath>

#include "brush/BrushState.h"
#include "brush/FormDraw.h"
#include "brush/Spraxel.h"
#include "colour/Gradients.h"
#include "core/document/Buffers.h"
#include "core/frame/Form2.h"
#include "core/framework/AppState.h"
#include "core/framework/vb.h"
#include "native/Lines.h"

namespace {
using vb::Rnd;

float Random() { return static_cast<float>(Rnd()); }

void Step(Particle& p, const ParticleSettings& s, float dmx, float dmy) {
    const float R = static_cast<float>(s.Randomize);
    p.PrevX = p.X;
    p.PrevY = p.Y;
    float vx = p.VX + (Random() - 0.5f) * R;
    float vy = p.VY + (Random() - 0.5f) * R;
    vy = p.Mass * ((Random() - 0.5f) * R + s.Gravity) + vy;
    vx = vx + dmx * s.Follow / 100;
    vy = vy + dmy * s.Follow / 100;
    vy = std::clamp(vy, -std::fabs(p.Terminal), std::fabs(p.Terminal));
    vx = std::clamp(vx, -std::fabs(p.Terminal), std::fabs(p.Terminal));
    p.X = p.X + (1 - s.Drag) * vx;
    p.Y = p.Y + (1 - s.Drag) * vy;
    p.VX = vx;
    p.VY = vy;
    p.Age = p.Age + 1;
}

void Emit(Particle& p, const ParticleSettings& s, float mx, float my, float dmx, float dmy) {
    p.State = 1;
    p.VX = (Random() - 0.5f) * 2 * s.Initial + dmx * s.UseVelocity / 100;
    p.VY = (Random() - 0.5f) * 2 * s.Initial + dmy * s.UseVelocity / 100;
    p.X = p.PrevX = mx;
    p.Y = p.PrevY = my;
    p.Age = 0;
}

int Rounded(float v) { return vb::CInt(std::clamp(v, -32768.0f, 32767.0f)); }

// The gradient's colour for a particle's age, 0..255 along its life.
uint32_t AgeColour(const Particle& p, int row) {
    const int i = std::clamp(static_cast<int>(vb::CInt(std::clamp(255.0f / p.Life * p.Age, -32768.0f, 32767.0f))), 0, 255);
    const int g = std::clamp(row, 0, GradientCount - 1);
    return vb::RGB(GradientData[g][0][i], GradientData[g][1][i], GradientData[g][2][i]);
}

// A step painted by the brush engine, which takes window pixels and the primary colour.
void BrushSegment(int x1, int y1, int x2, int y2, uint32_t colour) {
    const float z = static_cast<float>(App.ZoomPercent) / 100.0f;
    Form2::Shape4.FillColor.setQuietly(colour);
    int16_t place = 0, paint = 1, shift = 0;
    float ax = x1 * z, ay = y1 * z, bx = x2 * z, by = y2 * z;
    Form1::Form_Draw(place, shift, ax, ay);
    Form1::Form_Draw(paint, shift, bx, by);
}
}  // namespace

void Do_Particles(float MouseX, float MouseY, float OldX, float OldY) {
    const ParticleSettings& s = ParticleSet;
    const float dmx = MouseX - OldX, dmy = MouseY - OldY;
    float emitted = 0;
    for (Particle& p : Particles) {
        if (p.State == 1) Step(p, s, dmx, dmy);
        if (p.State == 1 && p.Age >= p.Life) p.State = 2;
        if (emitted < s.PerEmission && (p.State == 0 || p.State == 2)) {
            Emit(p, s, MouseX, MouseY, dmx, dmy);
            emitted = emitted + 1;
        }
    }
}

void Draw_Particles() {
    if (BufR.empty()) return;
    const int W = PictureWidth({&BufR, &BufG, &BufB}), H = PictureHeight({&BufR, &BufG, &BufB});
    const uint32_t primary = Form2::Shape4.FillColor;
    const kwline::RgbPlanes planes{BufR.data(), BufG.data(), BufB.data(), BufR.stride()};
    if (ParticleSet.BrushStyle) StrokeRefreshOff = 255;
    for (const Particle& p : Particles) {
        if (p.State != 1) continue;
        const int x1 = Rounded(p.PrevX), y1 = Rounded(p.PrevY), x2 = Rounded(p.X), y2 = Rounded(p.Y);
        const uint32_t c = AgeColour(p, ParticleSet.GradientRow);
        if (ParticleSet.BrushStyle) BrushSegment(x1, y1, x2, y2, c);
        else kwline::AALine(planes, x1, y1, x2, y2, vb::RedOf(c), vb::GreenOf(c), vb::BlueOf(c), W, H);
    }
    Form2::Shape4.FillColor.setQuietly(primary);
    StrokeRefreshOff = 0;
}
