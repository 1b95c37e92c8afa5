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
    float Pressure = 1;  // the pen's pressure at the mouse position being handled, 0..1; a mouse is 1
    uint8_t GradientIndex = 0;
    uint8_t BrushInterpolate = 1;
    uint8_t NoiseAmount = 0;
    uint8_t NoiseMode = 0;
    float CursorX = 0, CursorY = 0;
    int16_t WaitingForClick = 0;
    int32_t LockCount = 0;
    int16_t UndoMegs = 14;
    uint8_t Silent = 0;

    std::string StartDirectory;  // base of every relative file name of the program
    uint8_t NoTitle = 0;  // non-zero: RedisplayWindow leaves the title alone

    // The canvas handlers' state.
    int16_t CtrlDragX = 0, CtrlDragY = 0;  // last position of a ctrl drag
    float CtrlDragTime = 0;                // seconds of its last step
    uint8_t MarqueeWasOn = 0;          // Timer1 at the press, restored at the release
    int16_t CustomBrushOn = 0;         // -1 while a custom brush is the current brush
};

extern AppState App;

// File names of the program folder resolve against the start directory.
std::string ProgramFile(const std::string& name);
