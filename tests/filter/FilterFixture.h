// Shared set-up of the filter tests: a small document with a distinct,
// asymmetric picture, and helpers to read and fill the planes.
#pragma once

#include <cstdint>
#include <vector>

#include "core/framework/MixTables.h"
#include "filter/FilterFrame.h"
#include "native/FilterThreads.h"
#include "tests/core/CoreFixture.h"

class FilterTest : public CoreTest {
protected:
    void SetUp() override {
        CoreTest::SetUp();
        static bool tables = false;
        if (!tables) BuildMixTables(nullptr), tables = true;
        kwthreads::SetThreads(2);
    }
    // A w x h document whose pixels all differ a little, channel by channel.
    static void Picture(int w, int h) {
        MakeTestDocument(w, h);
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) {
                BufR(x, y) = static_cast<uint8_t>((x * 37 + y * 11) % 256);
                BufG(x, y) = static_cast<uint8_t>((x * 5 + y * 53 + 40) % 256);
                BufB(x, y) = static_cast<uint8_t>((x * x + y * 3 + 90) % 256);
            }
    }
    static void Fill(Plane& p, uint8_t v) {
        for (int y = 0; y < BufferHeight(); ++y)
            for (int x = 0; x < BufferWidth(); ++x) p(x, y) = v;
    }
    // The picture area of the three main planes, for comparing whole states.
    static std::vector<uint8_t> Snapshot() {
        std::vector<uint8_t> v;
        for (const Plane* p : {&BufR, &BufG, &BufB})
            for (int y = 0; y < BufferHeight(); ++y)
                for (int x = 0; x < BufferWidth(); ++x) v.push_back((*p)(x, y));
        return v;
    }
    static std::vector<uint8_t> AlphaSnapshot() {
        std::vector<uint8_t> v;
        for (int y = 0; y < BufferHeight(); ++y)
            for (int x = 0; x < BufferWidth(); ++x) v.push_back(BufA(x, y));
        return v;
    }
    // Alpha on with the left half selected.
    static void SelectLeftHalf() {
        SetAlphaOn(true);
        for (int y = 0; y < BufferHeight(); ++y)
            for (int x = 0; x < BufferWidth(); ++x) BufA(x, y) = x < BufferWidth() / 2 ? 255 : 0;
    }
};
