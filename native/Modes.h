// The names of the painting modes, the fill modes and the fill styles, with
// the numbers they are stored under (settings and files keep the numbers, so
// they never change), and the one set of blend operations both the brush and
// the fills apply.
#pragma once

#include <cstdint>

namespace kwmode {

// How paint and the picture beneath it combine, for the brush and the fills
// alike. Each caller keeps its own table orientation; the operation is the same.
enum class Blend : uint8_t {
    Normal,      // the paint over the picture by opacity alone
    Add,         // picture + paint, held at 255
    Subtract,    // picture - paint, held at 0
    Multiply,    // picture * paint / 255
    Divide,      // one over the other, scaled to 255
    Screen,      // picture + (255 - picture) * paint / 255
    AroundGrey,  // picture + paint - 127, held to 0..255
};

// The brush's painting modes (App.PaintMode, BrushMode).
enum class PaintMode : uint8_t {
    Default = 0,
    Additive = 1,
    Subtract = 2,
    Multiply = 3,
    Rubthrough = 4,  // the swap layer shows through
    Panto = 5,       // the picture at an offset: the clone source
    Smear = 6,       // the picture where the previous dab lay
    Pattern = 7,     // the custom brush tiled from the picture's corner
    OffsetPattern = 8,  // the custom brush tiled from the stroke's start
    Divide = 9,
    Screen = 10,
    AroundGrey = 11,
};

// The fill modes (App.FillMode) of the fills and shapes.
enum class FillMode : uint8_t {
    Default = 0,
    Add = 1,
    Subtract = 2,
    Multiply = 3,
    Alpha = 4,  // painted as the default
    Divide = 5,
    Screen = 6,
    Rubthrough = 7,  // the colour is the swap layer's pixel
};

// The fill styles (App.FillStyle): where the colour of a filled pixel comes from.
enum class FillStyle : uint16_t {
    Colour = 0,         // the colour the caller gives
    Horizontal = 1,     // the gradient across the box
    FitHorizontal = 2,  // the same, across the box
    Vertical = 3,       // the gradient down the box
    Circular = 4,       // the gradient outwards from the box's centre
    TileBrush = 5,      // the custom brush tiled from the picture's corner
    FitBrush = 6,       // the custom brush stretched over the box
};

// The blend a painting mode applies. The modes that take their paint from
// elsewhere (swap layer, picture, pattern) lay it on normally.
constexpr Blend BlendOf(PaintMode m) {
    switch (m) {
        case PaintMode::Additive: return Blend::Add;
        case PaintMode::Subtract: return Blend::Subtract;
        case PaintMode::Multiply: return Blend::Multiply;
        case PaintMode::Divide: return Blend::Divide;
        case PaintMode::Screen: return Blend::Screen;
        case PaintMode::AroundGrey: return Blend::AroundGrey;
        default: return Blend::Normal;
    }
}

// The blend a fill mode applies; alpha and rubthrough lay their colour on normally.
constexpr Blend BlendOf(FillMode m) {
    switch (m) {
        case FillMode::Add: return Blend::Add;
        case FillMode::Subtract: return Blend::Subtract;
        case FillMode::Multiply: return Blend::Multiply;
        case FillMode::Divide: return Blend::Divide;
        case FillMode::Screen: return Blend::Screen;
        default: return Blend::Normal;
    }
}

}  // namespace kwmode
