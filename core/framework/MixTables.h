// The six 256 x 256 mixing tables, table(fast, slow) at [fast + 256 * slow].
#pragma once

#include <cstdint>

extern uint8_t MixAdd[65536], MixSub[65536], MixMult[65536], MixDiv[65536], MixScreen[65536],
    MixAroundGrey[65536];

inline uint8_t& MixAt(uint8_t* table, int fast, int slow) { return table[fast + 256 * slow]; }

// Builds the tables in the order add, subtract, multiply, divide, screen, around grey,
// calling `step` with 20, 30, 40, 50, 60 after each table from the second on.
void BuildMixTables(void (*step)(int percent));
