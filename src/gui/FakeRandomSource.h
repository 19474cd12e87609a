#pragma once

#include <QList>

#include "gui/RandomSource.h"

namespace kelvane {

// Gives the scripted numbers first, then a fixed repeatable sequence.
class FakeRandomSource final : public RandomSource {
  public:
    void Seed(std::uint32_t seed) override;
    double Next() override;

    QList<double> Script;
    QList<std::uint32_t> Seeds;

  private:
    std::uint32_t state_ = 1;
};

}  // namespace kelvane
