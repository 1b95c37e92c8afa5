// Planes: byte (or wider) grids with inclusive bounds 0..W by 0..H, x fastest.
// The extra column and row give neighbour reads at x + 1 and y + 1 a safe landing,
// so the stride of a plane for a W by H picture is W + 1.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

template <typename T>
class Grid {
public:
    Grid() = default;
    Grid(const Grid&) = delete;
    Grid& operator=(const Grid&) = delete;
    Grid(Grid&& o) noexcept { *this = std::move(o); }
    // A grid over memory that something else owns and outlives it (a slot of
    // the undo ring): reads and writes go to that memory, nothing is freed.
    static Grid View(T* data, int ubX, int ubY) {
        Grid g;
        if (!data || ubX < 0 || ubY < 0) return g;
        g.mem_ = Memory(data, Release{false});
        g.ubX_ = ubX;
        g.ubY_ = ubY;
        return g;
    }
    bool isView() const { return mem_ && !mem_.get_deleter().owns; }
    Grid& operator=(Grid&& o) noexcept {
        mem_ = std::move(o.mem_);
        ubX_ = std::exchange(o.ubX_, -1);
        ubY_ = std::exchange(o.ubY_, -1);
        return *this;
    }

    // Allocates bounds 0..ubX by 0..ubY, zero-filled, so every page is touched now
    // rather than on the first stroke. Throws std::bad_alloc and leaves *this alone.
    // Unzeroed, the caller writes every element itself before any read.
    void alloc(int ubX, int ubY, bool zero = true) {
        *this = Make(ubX, ubY, zero);
    }
    static Grid Make(int ubX, int ubY, bool zero = true) {
        Grid g;
        if (ubX < 0 || ubY < 0) return g;
        size_t n = static_cast<size_t>(ubX + 1) * static_cast<size_t>(ubY + 1);
        g.mem_ = Memory(zero ? new T[n]() : new T[n], Release{true});
        g.ubX_ = ubX;
        g.ubY_ = ubY;
        return g;
    }
    void free() { *this = Grid(); }

    bool empty() const { return !mem_; }
    int ubX() const { return ubX_; }   // upper bound of x, inclusive
    int ubY() const { return ubY_; }
    size_t stride() const { return static_cast<size_t>(ubX_ + 1); }
    size_t count() const { return mem_ ? stride() * static_cast<size_t>(ubY_ + 1) : 0; }
    size_t bytes() const { return count() * sizeof(T); }
    T* data() { return mem_.get(); }
    const T* data() const { return mem_.get(); }
    T* row(int y) { return mem_.get() + static_cast<size_t>(y) * stride(); }
    const T* row(int y) const { return mem_.get() + static_cast<size_t>(y) * stride(); }

    bool inBounds(int x, int y) const { return mem_ && x >= 0 && y >= 0 && x <= ubX_ && y <= ubY_; }
    T& operator()(int x, int y) {
        assert(inBounds(x, y));
        return mem_[static_cast<size_t>(y) * stride() + static_cast<size_t>(x)];
    }
    const T& operator()(int x, int y) const {
        assert(inBounds(x, y));
        return mem_[static_cast<size_t>(y) * stride() + static_cast<size_t>(x)];
    }
    void fill(T v) { std::fill_n(mem_.get(), count(), v); }
    // Whole-array copy, as the classic array assignment does: bounds follow the source.
    void copyFrom(const Grid& src) {
        if (src.ubX_ != ubX_ || src.ubY_ != ubY_ || !mem_) *this = Make(src.ubX_, src.ubY_);
        if (src.mem_) std::memcpy(mem_.get(), src.mem_.get(), src.bytes());
    }
    void swap(Grid& o) noexcept {
        std::swap(mem_, o.mem_);
        std::swap(ubX_, o.ubX_);
        std::swap(ubY_, o.ubY_);
    }

private:
    struct Release {
        bool owns = true;
        void operator()(T* p) const {
            if (owns) delete[] p;
        }
    };
    using Memory = std::unique_ptr<T[], Release>;
    Memory mem_;
    int ubX_ = -1;
    int ubY_ = -1;
};

// A stack of grids sharing bounds: (x, y, slot). Slots lie one after another,
// each a whole grid with the same stride.
template <typename T>
class Grid3 {
public:
    void alloc(int ubX, int ubY, int ubZ, bool zero = true) { *this = Make(ubX, ubY, ubZ, zero); }
    static Grid3 Make(int ubX, int ubY, int ubZ, bool zero = true) {
        Grid3 g;
        if (ubX < 0 || ubY < 0 || ubZ < 0) return g;
        size_t n = static_cast<size_t>(ubX + 1) * static_cast<size_t>(ubY + 1) *
                   static_cast<size_t>(ubZ + 1);
        g.mem_.reset(zero ? new T[n]() : new T[n]);
        g.ubX_ = ubX;
        g.ubY_ = ubY;
        g.ubZ_ = ubZ;
        return g;
    }
    void free() { *this = Grid3(); }
    bool empty() const { return !mem_; }
    int ubX() const { return ubX_; }
    int ubY() const { return ubY_; }
    int ubZ() const { return ubZ_; }
    size_t stride() const { return static_cast<size_t>(ubX_ + 1); }
    size_t slotCount() const { return stride() * static_cast<size_t>(ubY_ + 1); }
    T* slot(int z) {
        assert(mem_ && z >= 0 && z <= ubZ_);
        return mem_.get() + slotCount() * static_cast<size_t>(z);
    }
    const T* slot(int z) const {
        assert(mem_ && z >= 0 && z <= ubZ_);
        return mem_.get() + slotCount() * static_cast<size_t>(z);
    }
    T& operator()(int x, int y, int z) {
        assert(mem_ && x >= 0 && y >= 0 && z >= 0 && x <= ubX_ && y <= ubY_ && z <= ubZ_);
        return slot(z)[static_cast<size_t>(y) * stride() + static_cast<size_t>(x)];
    }

private:
    std::unique_ptr<T[]> mem_;
    int ubX_ = -1, ubY_ = -1, ubZ_ = -1;
};

using Plane = Grid<uint8_t>;
using Plane3 = Grid3<uint8_t>;
