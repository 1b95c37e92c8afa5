// The folders' procedures are bound into the menus, keys and panels once, as
// at start-up, and the brush palette is drawn, before any test of this program runs.
#include <gtest/gtest.h>

#include "brush/Brush.h"
#include "canvas/CanvasInput.h"
#include "colour/Colour.h"

namespace {
class Bound : public ::testing::Environment {
public:
    void SetUp() override {
        BindColourMenus();
        BindBrushMenus();
        BindCanvasMenus();
        StartupPaper();
        StartupBrushes();
    }
};
const auto* const bound = ::testing::AddGlobalTestEnvironment(new Bound);
}  // namespace
