#include "store/OutputFile.h"

namespace kelvane {

OutputFile::~OutputFile() {
    if (number_ != 0) {
        file_.Cancel();
        Release();
    }
}

qint16 OutputFile::OpenForOutput(const QString& fileName) {
    if (number_ != 0 || fileName.isEmpty()) {
        return 0;
    }
    const qint16 number = numbers_.Take();
    if (number == 0) {
        return 0;
    }
    if (!file_.Open(fileName)) {
        numbers_.Release(number);
        return 0;
    }
    number_ = number;
    return number_;
}

bool OutputFile::Close() {
    if (number_ == 0) {
        return false;
    }
    const bool written = file_.Commit();
    Release();
    return written;
}

void OutputFile::Release() {
    numbers_.Release(number_);
    number_ = 0;
}

}  // namespace kelvane
