#include "calfile/Flags.h"

namespace kelvane {

bool NumberToFlag(qint64 number) {
    return number != 0;
}

qint16 FlagToDigit(bool flag) {
    return flag ? 1 : 0;
}

}  // namespace kelvane
