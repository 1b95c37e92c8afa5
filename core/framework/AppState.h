// The application record: tools, modes and flags that every folder reads.
// Integer widths are behaviour: a 16-bit field wraps like one.
#pragma once

#include <cstdint>
#include <string>

#include "native/Modes.h"

struct AppState {
    uint8_t SwapShown = 0;        // odd number of main/swap exchanges
    uint8_t AlphaOff = 255;       // or-ed into each alpha sample: 255 lets everything through
    int32_t ZoomPercent = 100;
    kwmode::PaintMode PaintMode = kwmode::PaintMode::Default;  // stored as its number, 8 bits
    kwmode::FillMode FillMode = kwmode::FillMode::Default;     // stored as its number, 8 bits
    kwmode::FillStyle FillStyle = kwmode::FillStyle::Colour;   // stored as its number, 16 bits
    int16_t Opacity = 0;
    float BrushFlow = 0;
    uint8_t GradientIndex = 0;
    uint8_t BrushInterpolate = 1;
    uint8_t NoiseAmount = 0;
    uint8_t NoiseMode = 0;
    int16_t MouseButton = 0;
    int16_t KeyDownCode = 0;
    float CursorX = 0, CursorY = 0;
    int16_t WaitingForClick = 0;
    int32_t LockCount = 0;
    int16_t UndoMegs = 14;
    uint8_t Silent = 0;

    uint8_t PickerDragValue = 255;      // the colour picker's drag value
    uint32_t PickerRedMark = 255, PickerGreenMark = 65280, PickerBlueMark = 16711680;
    double WarpStrength = 1.0;
    float LastStrokeX = -1.0f, LastStrokeY = -1.0f;  // last stroke position
    int32_t LastLineX = -1;                          // last line position
    std::string StartDirectory;  // base of every relative file name of the program
    uint32_t TabColors[4] = {0xE0E0E0, 0x808080, 0xE0E0E0, 0xFFFFFF};
    uint8_t NoTitle = 0;  // non-zero: RedisplayWindow leaves the title alone

    // The canvas handlers' state: presses, rubber bands, clone points.
    float DragStartX = -1.0f, DragStartY = -1.0f;  // press of the box tools, window pixels
    uint8_t LineActive = 0;                        // 255 between press and release of the line tools
    int16_t LineStartX = 0, LineStartY = 0;
    int16_t LassoActive = 0, LassoCount = 0;
    int16_t CtrlDragX = 0, CtrlDragY = 0;  // last position of a ctrl drag
    float CtrlDragTime = 0;                // seconds of its last step
    int16_t CloneSourceX = 0, CloneSourceY = 0, CloneDestX = 0, CloneDestY = 0;
    int16_t StrokeX = 0, StrokeY = 0;  // press position rounded
    uint8_t MarqueeWasOn = 0;          // Timer1 at the press, restored at the release
    int16_t CustomBrushOn = 0;         // -1 while a custom brush is the current brush
    int32_t ParticlesOn = 0, BristlesOn = 0;
    int16_t LastParticleX = 0, LastParticleY = 0, LastBristleX = 0, LastBristleY = 0;
};

extern AppState App;

// File names of the program folder resolve against the start directory.
std::string ProgramFile(const std::string& name);
