// Classic gradient noise in two and three dimensions, and the octave sum of the
// two-dimensional noise worked a row at a time. Lattice gradients come from one
// fixed permutation of 0..255, so the same point always gives the same value;
// the output lies in about -1 .. 1 and is 0 on every lattice point.
#pragma once

#include <cstdint>

namespace kwfilter {
float noise2(const float* vec);  // vec[0], vec[1]
float noise3(const float* vec);  // vec[0], vec[1], vec[2]

// The octave sum of the Perlin renders, for one row y of a picture W wide:
// acc := 0; for i = 1..K: s := scale * i * 5, o := 100 * i,
//   acc := noise2((x / s + o, y / s + o)) * 256 + acc + 128
// and out[x] := acc, x = 0..W-1. The coordinates are taken as the single
// floats noise2 is given, and each octave's terms are formed in noise2's own
// order, so every value is the one noise2 called pixel by pixel gives.
// `columns` is a table made once per picture by PerlinColumns.
struct PerlinColumns;
PerlinColumns* MakePerlinColumns(int W, int K, int scale);
void FreePerlinColumns(PerlinColumns* columns);
void PerlinOctaveRow(const PerlinColumns* columns, double y, float* out);
// The same for a point of another projection: column coordinate t and row
// coordinate v, both before the division by s.
float PerlinOctaves(float t, float v, int K, int scale);
}  // namespace kwfilter
