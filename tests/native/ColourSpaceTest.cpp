// Hue, saturation and value: the round trip, and the brush's jittered values
// beyond 0..1 taken by the conversion as they come.
#include <gtest/gtest.h>

#include "native/ColourSpace.h"

TEST(ColourSpace, RoundTripsAndTakesValuesOutsideTheirRangeAsTheyCome) {
    const float trips[][3] = {{1, 0, 0}, {0.2f, 0.6f, 0.1f}, {0.3f, 0.3f, 0.9f}, {0.5f, 0.5f, 0.5f}, {0, 0, 0}};
    for (const auto& c : trips) {
        float h, s, v, rgb[3];
        kwfilter::RGB_To_HSV(c[0], c[1], c[2], h, s, v);
        EXPECT_GE(h, 0.0f);
        EXPECT_LT(h, 360.0f);
        kwfilter::HSV_To_RGB(rgb[0], rgb[1], rgb[2], h, s, v);
        for (int k = 0; k < 3; ++k) EXPECT_NEAR(rgb[k], c[k], 1e-5f);
    }
    const float cases[][6] = {
        {-1, 0.7f, 0.4f, 0.4f, 0.4f, 0.4f},  // no hue: grey at v
        // Colour jitter can push v above 1: the smallest component is v (1 - s), 0.6, not
        // the 0.5 of v held to 1; the largest stays at 1.
        {0, 0.5f, 1.2f, 1, 0.6f, 0.6f},
        {120, -0.2f, 0.5f, 0.6f, 0.5f, 0.6f},  // s below 0 lifts the smallest above v
        // s above 1 drives the smallest below 0, held at 0; the middle one, v (1 - s f), moves too.
        {30, 1.2f, 0.5f, 0.5f, 0.5f * (1 - 1.2f * 0.5f), 0},
    };
    for (const auto& c : cases) {
        float rgb[3];
        kwfilter::HSV_To_RGB(rgb[0], rgb[1], rgb[2], c[0], c[1], c[2]);
        for (int k = 0; k < 3; ++k) EXPECT_NEAR(rgb[k], c[3 + k], 1e-6f) << c[0] << " " << c[1] << " " << c[2];
    }
}
