// Shared by the animation tests: a scripted host, a small document and no
// animation at the start; helpers to paint the buffer and read frames.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "anim/Create_Anim.h"
#include "anim/FrameStore.h"
#include "anim/Transport.h"
#include "core/document/Buffers.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/AppState.h"
#include "tests/support/ScriptedHost.h"

// A colour of the whole buffer: every byte of each plane, extra row and column too.
struct Rgb {
    uint8_t r = 0, g = 0, b = 0;
    bool operator==(const Rgb&) const = default;
};
inline std::ostream& operator<<(std::ostream& o, const Rgb& c) {
    return o << "(" << int(c.r) << ", " << int(c.g) << ", " << int(c.b) << ")";
}

inline void Paint(Rgb c) {
    std::memset(BufR.data(), c.r, BufR.count());
    std::memset(BufG.data(), c.g, BufG.count());
    std::memset(BufB.data(), c.b, BufB.count());
}

// The colour of a frame, or of the buffer, after checking that every byte but
// the last (which the one-byte-short copies leave alone) has it.
inline Rgb Uniform(const uint8_t* r, const uint8_t* g, const uint8_t* b, size_t n) {
    Rgb c{r[0], g[0], b[0]};
    for (size_t i = 0; i + 1 < n; ++i)
        if (r[i] != c.r || g[i] != c.g || b[i] != c.b) {
            ADD_FAILURE() << "not uniform at byte " << i;
            break;
        }
    return c;
}
inline Rgb FrameColour(int f) { return Uniform(AnimR.frame(f), AnimG.frame(f), AnimB.frame(f), AnimR.frameBytes()); }
// The colour of the picture part of a frame (the extra row and column aside).
inline Rgb FramePictureColour(int f) {
    const size_t stride = size_t(AnimR.ubX()) + 1;
    const uint8_t *r = AnimR.frame(f), *g = AnimG.frame(f), *b = AnimB.frame(f);
    Rgb c{r[0], g[0], b[0]};
    for (int y = 0; y < AnimR.ubY(); ++y)
        for (int x = 0; x < AnimR.ubX(); ++x) {
            size_t i = y * stride + x;
            if (r[i] != c.r || g[i] != c.g || b[i] != c.b) {
                ADD_FAILURE() << "frame " << f << " not uniform at " << x << ", " << y;
                return c;
            }
        }
    return c;
}
inline Rgb BufferColour() { return Uniform(BufR.data(), BufG.data(), BufB.data(), BufR.count()); }

class AnimTest : public ::testing::Test {
protected:
    void SetUp() override {
        App = AppState();
        App.UndoMegs = 14;
        Form2::Shape1.FillColor = 0x302010;
        MakeTestDocument(6, 4);
        AvailableMemory = [] { return uint64_t{1} << 34; };
    }
    void TearDown() override {
        MDIForm1::Anim_Timer.TimerEnabled = false;
        MDIForm1::ResetAnimation();
        MDIForm1::Anim_Tools.Visible = false;
        MDIForm1::Ani_Interface.Checked = false;
        AvailableMemory = ReadAvailableMemory;
        EXPECT_TRUE(host.AllAnswered());
    }
    // Animation > Create... with `frames` typed and OK; `replace` answers the
    // question about an animation that exists (0: none is asked).
    void MakeAnimation(int frames, int replace = 0) {
        host.Expect("Create_Anim", [frames] {
            Create_Anim::Text1.Text = std::to_string(frames);
            Create_Anim::Command1.press();
        });
        if (replace) host.Answer("An animation allready exists.  Delete it?", replace);
        MDIForm1::Ani_Create_Click();
    }
    // An animation whose frame f is painted (10 f, 10 f + 1, 10 f + 2), shown at frame 0.
    void MakeDistinctFrames(int frames) {
        MakeAnimation(frames);
        for (int f = 0; f < frames; ++f) {
            uint8_t v = static_cast<uint8_t>(10 * f);
            std::memset(AnimR.frame(f), v, AnimR.frameBytes());
            std::memset(AnimG.frame(f), v + 1, AnimG.frameBytes());
            std::memset(AnimB.frame(f), v + 2, AnimB.frameBytes());
        }
        GetFrame();
    }
    ScriptedHost host;
};
