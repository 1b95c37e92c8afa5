// Hue, saturation and value: the round trip, and the brush's jittered values
// beyond 0..1 taken by the conversion as they come.
#include <gtest/gtest.h>

#include "native/ColourSpace.h"

using kwfilter::HSV_To_RGB;
using kwfilter::RGB_To_HSV;

TEST(ColourSpace, RoundTripsAndGreyHasNoHue) {
    const float cases[][3] = {{1, 0, 0}, {0.2f, 0.6f, 0.1f}, {0.3f, 0.3f, 0.9f}, {0.5f, 0.5f, 0.5f}, {0, 0, 0}};
    for (const auto& c : cases) {
        float h, s, v, r, g, b;
        RGB_To_HSV(c[0], c[1], c[2], h, s, v);
        EXPECT_GE(h, 0.0f);
        EXPECT_LT(h, 360.0f);
        HSV_To_RGB(r, g, b, h, s, v);
        EXPECT_NEAR(r, c[0], 1e-5f);
        EXPECT_NEAR(g, c[1], 1e-5f);
        EXPECT_NEAR(b, c[2], 1e-5f);
    }
    float r, g, b;
    HSV_To_RGB(r, g, b, -1.0f, 0.7f, 0.4f);
    EXPECT_FLOAT_EQ(r, 0.4f);
    EXPECT_FLOAT_EQ(g, 0.4f);
    EXPECT_FLOAT_EQ(b, 0.4f);
}

TEST(ColourSpace, SaturationAndValueOutsideTheirRangeAreNotHeldBeforeTheConversion) {
    // Colour jitter can push v above 1: the hexcone gives v (1 - s) for the
    // smallest component, 0.6 here, not the 0.5 of v held to 1.
    float r, g, b;
    HSV_To_RGB(r, g, b, 0.0f, 0.5f, 1.2f);
    EXPECT_FLOAT_EQ(r, 1.0f);  // the components themselves stay within 0..1
    EXPECT_NEAR(g, 0.6f, 1e-6f);
    EXPECT_NEAR(b, 0.6f, 1e-6f);
    // A saturation below 0 lifts the smallest component above v: 0.5 * 1.2.
    HSV_To_RGB(r, g, b, 120.0f, -0.2f, 0.5f);
    EXPECT_NEAR(r, 0.6f, 1e-6f);
    EXPECT_NEAR(g, 0.5f, 1e-6f);
    EXPECT_NEAR(b, 0.6f, 1e-6f);
    // A saturation above 1 drives it below 0, held at 0; the middle one, v (1 - s f), moves too.
    HSV_To_RGB(r, g, b, 30.0f, 1.2f, 0.5f);
    EXPECT_FLOAT_EQ(r, 0.5f);
    EXPECT_NEAR(g, 0.5f * (1 - 1.2f * (1 - 0.5f)), 1e-6f);
    EXPECT_FLOAT_EQ(b, 0.0f);
}
