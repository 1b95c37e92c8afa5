// The application record: tools, modes and flags that every folder reads.
// Integer widths are behaviour: a 16-bit field wraps like one.
#pragma once

#include <cstdint>
#include <string>

struct AppState {
    uint8_t SwapShown = 0;        // odd number of main/swap exchanges
    uint8_t AlphaOff = 255;       // or-ed into each alpha sample: 255 lets everything through
    int32_t ZoomPercent = 100;
    uint8_t PaintMode = 0;
    uint8_t FillMode = 0;
    uint16_t FillStyle = 0;
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
};

extern AppState App;

// File names of the program folder resolve against the start directory.
std::string ProgramFile(const std::string& name);
