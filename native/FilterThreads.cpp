// Two-thread row bands: a worker takes the lower band while the caller works the
// upper one; the split depends only on the row count and the thread count.
#include "native/FilterThreads.h"

#include <atomic>
#include <exception>
#include <thread>

namespace kwthreads {
namespace {
std::atomic<int> threadCount{2};
}

int Threads() { return threadCount.load(); }

void SetThreads(int n) { threadCount.store(n < 1 ? 1 : (n > 2 ? 2 : n)); }

void ForRows(int rows, const std::function<void(int, int)>& body, int minRows) {
    if (rows <= 0) return;
    const int n = Threads();
    if (n < 2 || rows < 2 * minRows) {
        body(0, rows);
        return;
    }
    const int mid = rows / 2;
    std::exception_ptr failure;
    std::thread worker([&] {
        try {
            body(mid, rows);
        } catch (...) {
            failure = std::current_exception();
        }
    });
    try {
        body(0, mid);
    } catch (...) {
        worker.join();
        throw;
    }
    worker.join();
    if (failure) std::rethrow_exception(failure);
}
}  // namespace kwthreads
