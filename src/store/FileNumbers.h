#pragma once

#include <QtGlobal>

#include <bitset>

namespace kelvane {

// Hands out the numbers 1..255 that name the program's open files.
class FileNumbers {
  public:
    static constexpr int Highest = 255;

    // The lowest free number, now taken; 0 when every number is in use.
    qint16 Take();
    // Frees a number taken before; other values are ignored.
    void Release(qint16 number);
    bool InUse(qint16 number) const;

  private:
    std::bitset<Highest + 1> taken_;
};

}  // namespace kelvane
