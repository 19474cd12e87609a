#pragma once

#include <QtGlobal>

#include <array>

namespace kelvane {

// A fixed array numbered 1..N, as the document numbers its slots and entries.
// Callers check Contains() before indexing with a number from outside.
template <typename T, int N>
class OneBased {
  public:
    static constexpr int First = 1;
    static constexpr int Last = N;

    static constexpr bool Contains(long long index) { return index >= First && index <= Last; }

    T& operator[](int index) {
        Q_ASSERT(Contains(index));
        return items_[static_cast<std::size_t>(index - 1)];
    }
    const T& operator[](int index) const {
        Q_ASSERT(Contains(index));
        return items_[static_cast<std::size_t>(index - 1)];
    }

    void Fill(const T& value) { items_.fill(value); }

    auto begin() { return items_.begin(); }
    auto end() { return items_.end(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

    friend bool operator==(const OneBased&, const OneBased&) = default;

  private:
    std::array<T, N> items_{};
};

}  // namespace kelvane
