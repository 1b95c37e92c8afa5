// The curve of the "Cubic" gradient passes through evenly spaced knots.
#include <gtest/gtest.h>

#include "native/Spline.h"

TEST(Spline, PassesThroughEveryKnotAndHoldsItsEnds) {
    const float knots[] = {0.2f, 0.9f, 0.1f, 0.5f, 1.0f};
    for (int i = 0; i < 5; ++i) EXPECT_NEAR(kwfilter::spline(i / 4.0f, 5, knots), knots[i], 1e-6f) << i;
    EXPECT_EQ(kwfilter::spline(-1.0f, 5, knots), 0.2f);
    EXPECT_EQ(kwfilter::spline(2.0f, 5, knots), 1.0f);
    EXPECT_EQ(kwfilter::spline(0.7f, 1, knots), 0.2f);
    EXPECT_EQ(kwfilter::spline(0.7f, 0, knots), 0.0f);
    // Between a high and a low knot it moves smoothly, overshooting no further than a curve of four points can.
    float mid = kwfilter::spline(3.0f / 8, 5, knots);
    EXPECT_GT(mid, 0.1f);
    EXPECT_LT(mid, 0.9f);
    const float line[] = {0.0f, 0.5f, 1.0f};
    EXPECT_NEAR(kwfilter::spline(0.3f, 3, line), 0.3f, 1e-6f) << "a straight line stays straight";
}
