#pragma once

#include <random>

#include "gui/RandomSource.h"

namespace kelvane {

// Random numbers from a Mersenne twister, 53 bits per number.
class MersenneRandomSource final : public RandomSource {
  public:
    void Seed(std::uint32_t seed) override { engine_.seed(seed); }
    double Next() override;

  private:
    std::mt19937 engine_;
};

}  // namespace kelvane
