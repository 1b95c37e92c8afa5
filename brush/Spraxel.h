// The "Spraxelics control" panel: the particle brush (each mouse move emits
// particles at the cursor and moves the live ones a step, drawing their paths)
// and the bristle brush (a fan of hairs at fixed offsets from the cursor).
#pragma once

#include <cstdint>
#include <vector>

#include "core/framework/controls.h"

namespace Spraxel {
extern Form form;
// Particles.
extern TextBox Text1, Text4, Text10, Text5, Text6, Text8, Text2, Text3, Text9, Text7;
extern Slider Hscroll1;       // "Gradient index" 0..7
extern Slider HProp1, HProp2;  // "Use mouse velocity", "Particles follow mouse", percent
extern ComboBox Combo4;       // "Style": "Line" or "Brush"
extern CheckBox Check1;       // particles "Enabled"
// Bristles.
extern TextBox Text14, Text11;  // "Bristles", "Radius"
extern Slider HProp3;            // "Color bleed", percent
extern CheckBox Check2;          // bristles "Enabled"
void Check1_Click();
void Check2_Click();
}  // namespace Spraxel
// The panel, shown beside the frame.
void ShowSpraxel();

struct Particle {
    int32_t State = 0;  // 0 never used, 1 live, 2 dead
    float X = 0, Y = 0, PrevX = 0, PrevY = 0, VX = 0, VY = 0;
    float Terminal = 0, Life = 0, Age = 0, Mass = 0;
    int32_t Splits = 0;  // kept in the record; no step uses it
};

struct ParticleSettings {
    float PerEmission = 0, Mass = 0, Gravity = 0, Initial = 0, Terminal = 0, Drag = 0, Life = 1;
    int32_t Splits = 0, Randomize = 0, MaxParticles = 1;
    int GradientRow = 0;
    float UseVelocity = 0, Follow = 0;  // percent
    bool BrushStyle = false;
};

struct Bristle {
    int16_t Angle = 0, Radius = 0, X = 0, Y = 0;
};

extern std::vector<Particle> Particles;
extern ParticleSettings ParticleSet;
extern std::vector<Bristle> Bristles;  // 0..BristleCount
extern int32_t BristleCount, BristleRadius;
extern uint8_t BristleBleed;
extern int32_t ParticlesOn, BristlesOn;  // -1 while the mode is on
extern int16_t LastParticleX, LastParticleY, LastBristleX, LastBristleY;

void Setup_particles();
// Positions in picture pixels.
void ProcessParticles(float MouseX, float MouseY, float OldX, float OldY);
void Do_Particles(float MouseX, float MouseY, float OldX, float OldY);
void Draw_Particles();

void Setup_Bristles();
void InitBristles(int16_t X, int16_t Y);
void DrawBristles(float X, float Y, int16_t OldX, int16_t OldY);

// The canvas handlers' part of these modes. The press places the bristles; a
// move with a button draws the mode that is on and returns true (the tool
// then has nothing to do), a free move only follows the cursor; the release
// sets the particles up afresh.
void SpraxelMouseDown(float X, float Y);
bool SpraxelMouseMove(int16_t Button, float X, float Y);
void SpraxelMouseUp();
