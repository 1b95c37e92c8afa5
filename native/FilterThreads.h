// Row bands on two threads (the caller and one worker of our own) for the
// filter kernels whose result does not depend on the order of work: each output
// row is computed from the source alone, so a split by rows gives the same bytes
// as one thread does.
#pragma once

#include <functional>

namespace kwthreads {
// Threads the kernels use: 2 by default, 1 to run everything on the caller.
int Threads();
void SetThreads(int n);
// Runs body(y0, y1) over the rows [0, rows), split into one contiguous band per
// thread (the caller works the first band). Small jobs (under `minRows` rows a
// thread) run on the caller alone. body must only write its own rows.
void ForRows(int rows, const std::function<void(int y0, int y1)>& body, int minRows = 16);
}  // namespace kwthreads
