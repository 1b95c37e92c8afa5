// A document, a scripted host and a neutral brush for the canvas tests, with
// helpers that drive the mouse and key handlers as events would. The test
// program's start composes the folders' rows as the program does; the paper
// and the brush palette are made once, as at start-up.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "brush/Brush.h"
#include "brush/BrushOptions.h"
#include "brush/BrushState.h"
#include "canvas/CanvasInput.h"
#include "colour/Colour.h"
#include "core/framework/AppState.h"
#include "core/framework/Codes.h"
#include "core/document/Buffers.h"
#include "core/display/Form1.h"
#include "core/frame/Form2.h"
#include "core/document/Undo.h"
#include "core/framework/vb.h"
#include "tests/support/ScriptedHost.h"

struct CanvasStarted : ::testing::Environment {
    void SetUp() override {
        StartupPaper();
        StartupBrushes();
    }
};
inline const auto* const canvasBound = ::testing::AddGlobalTestEnvironment(new CanvasStarted);

class CanvasTest : public ::testing::Test {
protected:
    static constexpr int W = 96, H = 64;
    void SetUp() override {
        host.surface = CanvasSurface{W, H, 32, 0, 0};
        Form2::Shape4.FillColor = 0x000000;
        Form2::Shape1.FillColor = 0xFFFFFF;  // a new document is cleared with it
        MakeTestDocument(W, H);
        App.ZoomPercent = 100;
        App.AlphaOff = 255;
        App.LockCount = 0;
        App.WaitingForClick = 0;
        App.CustomBrushOn = 0;
        App.CtrlDragTime = 0;  // a drag of an earlier test must not hold this one back
        Form1::Timer1.TimerEnabled = false;
        ClearAllGads();
        Form2::Option1.Value = true;
        Form2::HScroll4.Value = 255;
        Form2::slider1.Value = 1;
        PickStockBrush(0);  // the hard disc
        Form2::HScroll5.Value = 8;
        PantoX = PantoY = 0;
        vb::Randomize(1234);
    }
    using I16 = int16_t;
    static void Press(int b, float x, float y, int s = 0) { Form1::Form_MouseDown(I16(b), I16(s), x, y); }
    static void Move(int b, float x, float y, int s = 0) { Form1::Form_MouseMove(I16(b), I16(s), x, y); }
    static void Release(int b, float x, float y, int s = 0) { Form1::Form_MouseUp(I16(b), I16(s), x, y); }
    static void Key(int c) {
        I16 k = I16(c);
        Form1::Form_KeyPress(k);
    }
    static void KeyUp(int code, int shift) {
        I16 k = I16(code);
        Form1::Form_KeyUp(k, I16(shift));
    }
    // A stroke through the points, the cursor seen first at the first of them.
    static void Stroke(const std::vector<std::pair<float, float>>& pts, int button = MouseButton::Left) {
        Move(MouseButton::None, pts.front().first, pts.front().second);
        Press(button, pts.front().first, pts.front().second);
        for (size_t i = 1; i < pts.size(); ++i) Move(button, pts[i].first, pts[i].second);
        Release(button, pts.back().first, pts.back().second);
    }
    // The picture's three planes, picture area only.
    static std::vector<uint8_t> Pixels() {
        std::vector<uint8_t> v;
        for (const Plane* p : {&BufR, &BufG, &BufB})
            for (int y = 0; y < BufferHeight(); ++y) v.insert(v.end(), p->row(y), p->row(y) + BufferWidth());
        return v;
    }
    static int Painted() {
        int n = 0;
        for (int y = 0; y < BufferHeight(); ++y)
            for (int x = 0; x < BufferWidth(); ++x) n += BufR(x, y) != 255 || BufG(x, y) != 255 || BufB(x, y) != 255;
        return n;
    }
    ScriptedHost host;
};
