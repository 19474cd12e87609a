#include "store/FileNumbers.h"

namespace kelvane {

qint16 FileNumbers::Take() {
    for (int number = 1; number <= Highest; ++number) {
        if (!taken_[static_cast<std::size_t>(number)]) {
            taken_.set(static_cast<std::size_t>(number));
            return static_cast<qint16>(number);
        }
    }
    return 0;
}

void FileNumbers::Release(qint16 number) {
    if (number >= 1 && number <= Highest) {
        taken_.reset(static_cast<std::size_t>(number));
    }
}

bool FileNumbers::InUse(qint16 number) const {
    return number >= 1 && number <= Highest && taken_[static_cast<std::size_t>(number)];
}

}  // namespace kelvane
