// DeliverPixel: what a fill or shape tool puts at a pixel. The pipeline itself
// (fill style, fill mode, noise, paper, opacity, alpha) is the kernel in
// native/Deliver.h; this layer feeds it from the globals and keeps its state.
//
// A loop over many pixels takes a snapshot of the settings and the kept values
// once with DeliverBegin, calls the inline DeliverPixel per pixel, and hands the
// state back with DeliverEnd. The classic entry further down does all three
// for a single pixel. Callers clip: X, Y must lie in the picture.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/framework/vb.h"
#include "native/Deliver.h"
#include "native/DeliverRows.h"

// The opacity work fields shared with the shape and fill tools.
extern int16_t OpacitySaved, OpacityInverse;
extern float OpacityFraction;  // Opacity / 255 as the caller set it

// The values DeliverPixel keeps from call to call: with a brush fill style and
// no custom brush the colour of the previous call is delivered again.
struct DeliverStatics {
    int32_t R = 0, G = 0, B = 0;
    float t = 0;
};
extern DeliverStatics DeliverKept;

// The settings read from the globals, and the kept values to start from.
struct DeliverRun {
    kwfill::DeliverSettings settings;
    kwfill::DeliverState state;
};
DeliverRun DeliverBegin();
// Hands the kept values back to DeliverKept and the opacity work fields.
void DeliverEnd(const kwfill::DeliverState& state);

// The noise draws of one pixel from the shared generator, in the kernel's order.
template <unsigned Steps = kwfill::DpAll>
[[gnu::always_inline]] inline kwfill::NoiseDraws DrawNoise(const kwfill::DeliverSettings& s) {
    kwfill::NoiseDraws d;
    if constexpr ((Steps & kwfill::DpNoise) != 0) {
        switch (kwfill::NoiseDrawCount(s)) {
            case 3: {
                const vb::ChannelNoise c = vb::NextChannelNoise();
                d.c[0] = c.r, d.c[1] = c.g, d.c[2] = c.b;
                break;
            }
            case 1: d.u = vb::Rnd(); break;
            default: break;
        }
    }
    return d;
}

// The noise draws of spans from the shared generator, in the order single
// pixels take them (DrawNoise): one array for value noise, a row per channel
// for noise per channel, none when the steps leave noise out.
class SpanNoise {
public:
    SpanNoise(const kwfill::DeliverSettings& s, unsigned steps, size_t widest);
    // The draws of the next n pixels, n at most `widest`.
    kwfill::SpanDraws Draw(size_t n);

private:
    int per_ = 0;
    size_t widest_ = 0;
    std::vector<double> one_;
    std::vector<int16_t> channels_;
};

// One pixel through the steps in Steps, inlined into each loop so that the
// settings stay in registers across pixels.
template <unsigned Steps = kwfill::DpAll>
[[gnu::always_inline]] inline uint32_t DeliverPixel(const kwfill::DeliverSettings& s, kwfill::DeliverState& st,
                                                    uint32_t colour, int X, int Y, int X1, int Y1, int X2, int Y2) {
    return kwfill::DeliverPixelIn<Steps>(s, st, DrawNoise<Steps>(s), colour, X, Y, X1, Y1, X2, Y2);
}

// The classic entry: one pixel, settings read afresh. A pixel outside the
// picture gives Result = Colour and changes nothing.
void DeliverPixel(int32_t& Colour, int16_t& X, int16_t& Y, int16_t& X1, int16_t& Y1, int16_t& X2, int16_t& Y2,
                  int32_t& Result);

// The colour under the baster, 1, 9 or 25 pixels by the checked entry of TBaster.
void TurkeyColor(int32_t X, int32_t Y, int32_t& R, int32_t& G, int32_t& B);

// The whole-buffer fill, key q.
void Buffer_Fill_Click();
// Its pixel loop: every pixel of the picture through DeliverPixel with the
// picture as the box; the opacity and paper fields must be loaded. With an
// undo snapshot by bands, each band of rows goes into it before it changes.
class UndoByBands;
void DeliverFill(uint32_t colour, UndoByBands* undo = nullptr);
// Loads Opacity and its work fields from the tool panel, and the paper state.
void LoadFillOpacity();
