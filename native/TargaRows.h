// Targa pixel rows: three interleaved bytes per pixel (blue, green, red, as
// the file stores them) to and from three planes. A plain form, an SSSE3 form
// of each, an AVX2 form of the join, and the form the processor can run,
// chosen once.
#pragma once

#include <cstdint>

namespace kwtarga {

// count pixels of src (3 * count bytes) into r, g, b.
using SplitRowFn = void (*)(const uint8_t* src, int count, uint8_t* r, uint8_t* g, uint8_t* b);
// count pixels of r, g, b into dest (3 * count bytes).
using JoinRowFn = void (*)(uint8_t* dest, int count, const uint8_t* r, const uint8_t* g, const uint8_t* b);

void SplitBgrRowScalar(const uint8_t* src, int count, uint8_t* r, uint8_t* g, uint8_t* b);
void JoinBgrRowScalar(uint8_t* dest, int count, const uint8_t* r, const uint8_t* g, const uint8_t* b);
// Call these only when HaveSsse3() says so.
void SplitBgrRowSsse3(const uint8_t* src, int count, uint8_t* r, uint8_t* g, uint8_t* b);
void JoinBgrRowSsse3(uint8_t* dest, int count, const uint8_t* r, const uint8_t* g, const uint8_t* b);
// Call this only when HaveAvx2() says so; it takes 32 pixels a step and the
// SSSE3 form finishes the row.
void JoinBgrRowAvx2(uint8_t* dest, int count, const uint8_t* r, const uint8_t* g, const uint8_t* b);
bool HaveSsse3();
bool HaveAvx2();

// The forms this processor runs: SSSE3 where it has it, else the plain ones.
SplitRowFn SplitBgrRow();
JoinRowFn JoinBgrRow();

}  // namespace kwtarga
