// Two-thread row bands: one worker thread of our own, started on first use and
// kept for the life of the program, takes the lower band while the caller works
// the upper one; the split depends only on the row count and the thread count.
#include "native/FilterThreads.h"

#include <atomic>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>

namespace kwthreads {
namespace {
std::atomic<int> threadCount{2};

class Worker {
public:
    Worker() : thread_([this] { Loop(); }) {}
    ~Worker() {
        {
            std::lock_guard<std::mutex> lock(m_);
            quit_ = true;
        }
        wake_.notify_one();
        thread_.join();
    }
    // Runs body(y0, y1) on the worker; Wait() returns when it is done and
    // rethrows what it threw.
    void Start(const std::function<void(int, int)>& body, int y0, int y1) {
        {
            std::lock_guard<std::mutex> lock(m_);
            body_ = &body, y0_ = y0, y1_ = y1, failure_ = nullptr, pending_ = true;
        }
        wake_.notify_one();
    }
    void Wait() {
        std::unique_lock<std::mutex> lock(m_);
        done_.wait(lock, [this] { return !pending_; });
        if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
    }
    // Taken by the one caller that hands work to the worker; a nested or
    // parallel call finds it taken and runs its rows alone.
    std::atomic<bool> taken{false};

private:
    void Loop() {
        std::unique_lock<std::mutex> lock(m_);
        for (;;) {
            wake_.wait(lock, [this] { return quit_ || (pending_ && body_); });
            if (quit_) return;
            const auto* body = std::exchange(body_, nullptr);
            lock.unlock();
            std::exception_ptr failure;
            try {
                (*body)(y0_, y1_);
            } catch (...) {
                failure = std::current_exception();
            }
            lock.lock();
            failure_ = failure;
            pending_ = false;
            done_.notify_one();
        }
    }
    std::mutex m_;
    std::condition_variable wake_, done_;
    const std::function<void(int, int)>* body_ = nullptr;
    int y0_ = 0, y1_ = 0;
    bool pending_ = false, quit_ = false;
    std::exception_ptr failure_;
    std::thread thread_;  // last: it starts once everything above exists
};

Worker& TheWorker() {
    static Worker w;
    return w;
}
}  // namespace

int Threads() { return threadCount.load(); }

void SetThreads(int n) { threadCount.store(n < 1 ? 1 : (n > 2 ? 2 : n)); }

void ForRows(int rows, const std::function<void(int, int)>& body, int minRows) {
    if (rows <= 0) return;
    if (Threads() < 2 || rows < 2 * minRows) return body(0, rows);
    Worker& w = TheWorker();
    bool expected = false;
    if (!w.taken.compare_exchange_strong(expected, true)) return body(0, rows);
    struct Release {
        std::atomic<bool>& flag;
        ~Release() { flag.store(false); }
    } release{w.taken};
    const int mid = rows / 2;
    w.Start(body, mid, rows);
    try {
        body(0, mid);
    } catch (...) {
        try {
            w.Wait();
        } catch (...) {
        }
        throw;
    }
    w.Wait();
}
}  // namespace kwthreads
