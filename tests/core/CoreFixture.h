// Shared set-up for logic tests of the core: a scripted host and the state a
// fresh start leaves behind.
#pragma once

#include <gtest/gtest.h>

#include "core/framework/AppState.h"
#include "core/document/Buffers.h"
#include "core/display/Display.h"
#include "core/frame/AlphaMenu.h"
#include "core/frame/BufferMenu.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "core/document/Undo.h"
#include "core/framework/vb.h"
#include "tests/support/ScriptedHost.h"

class CoreTest : public ::testing::Test {
protected:
    void SetUp() override {
        App = AppState();
        App.UndoMegs = 14;
        MDIForm1::AlphaEnable.Checked = false;
        Menus::MixSwapNone.Checked = false;
        DisplayBroken = 0;
        Form2::Shape1.FillColor = 0xFFFFFF;
        host.surface.reset();
    }
    // Paints a distinct value into every picture pixel so snapshots can be told apart.
    static void Stamp(uint8_t v) {
        for (int y = 0; y < BufferHeight(); ++y)
            for (int x = 0; x < BufferWidth(); ++x) {
                BufR(x, y) = v;
                BufG(x, y) = static_cast<uint8_t>(v + 1);
                BufB(x, y) = static_cast<uint8_t>(v + 2);
            }
    }
    ScriptedHost host;
};
