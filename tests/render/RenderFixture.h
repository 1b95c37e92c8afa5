// Shared set-up of the render tests: the filter tests' document with a seeded
// generator and a known gradient in slot 2.
#pragma once

#include "colour/Gradients.h"
#include "tests/filter/FilterFixture.h"

class RenderTest : public FilterTest {
protected:
    void SetUp() override {
        FilterTest::SetUp();
        vb::Randomize(1234);
        for (int i = 0; i < 256; ++i) {
            Grad(i, 0, 2) = static_cast<uint8_t>(i);
            Grad(i, 1, 2) = static_cast<uint8_t>(255 - i);
            Grad(i, 2, 2) = static_cast<uint8_t>(i / 3);
        }
    }
    static void SelectAll(uint8_t a) { Fill(BufA, a); }
};
