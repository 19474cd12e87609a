#include "gui/FakeRandomSource.h"

namespace kelvane {

void FakeRandomSource::Seed(std::uint32_t seed) {
    Seeds.append(seed);
    state_ = seed;
}

double FakeRandomSource::Next() {
    if (!Script.isEmpty()) {
        return Script.takeFirst();
    }
    // A small linear congruential step: repeatable and good enough for tests.
    state_ = state_ * 1664525u + 1013904223u;
    return (state_ >> 8) / 16777216.0;
}

}  // namespace kelvane
