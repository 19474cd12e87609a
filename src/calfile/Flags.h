#pragma once

#include <QtGlobal>

namespace kelvane {

// True for every value other than 0: numbers read from a calendar file become flags.
bool NumberToFlag(qint64 number);
// 1 for true, 0 for false: flags as a calendar file writes them.
qint16 FlagToDigit(bool flag);

}  // namespace kelvane
