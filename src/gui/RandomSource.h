#pragma once

#include <cstdint>

namespace kelvane {

// Uniform random numbers in [0, 1).
class RandomSource {
  public:
    virtual ~RandomSource() = default;

    virtual void Seed(std::uint32_t seed) = 0;
    // The next number, never below 0 and always below 1.
    virtual double Next() = 0;
};

}  // namespace kelvane
