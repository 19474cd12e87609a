#pragma once

#include <QString>

namespace kelvane {

inline constexpr int TipTextCount = 10;

// The hint of number n, 1..9; any other number gives the tenth.
QString TipText(int n);

}  // namespace kelvane
