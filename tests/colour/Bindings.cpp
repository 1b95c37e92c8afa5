// The colour folder's procedures are bound into the menus, keys and tool panel
// once, as at start-up, before any test of this program runs.
#include <gtest/gtest.h>

#include "colour/Colour.h"

namespace {
class BoundColour : public ::testing::Environment {
public:
    void SetUp() override { BindColourMenus(); }
};
const auto* const bound = ::testing::AddGlobalTestEnvironment(new BoundColour);
}  // namespace
