// A hook: how a lower piece tells the pieces above it that something happened
// (the display redrew, the alpha state changed) without calling up into them.
// Listeners are connected once, by the start-up composition.
#pragma once

#include <functional>
#include <utility>
#include <vector>

template <typename... Args>
class Hook {
public:
    void listen(std::function<void(Args...)> listener) { listeners_.push_back(std::move(listener)); }
    void raise(Args... args) const {
        for (const auto& l : listeners_) l(args...);
    }
    void clear() { listeners_.clear(); }

private:
    std::vector<std::function<void(Args...)>> listeners_;
};
