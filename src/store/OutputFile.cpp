#include "store/OutputFile.h"

namespace kelvane {

OutputFile::~OutputFile() {
    if (number_ != 0) {
        file_.cancelWriting();
        file_.commit();  // only closes: writing was cancelled
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
    file_.setFileName(fileName);
    if (!file_.open(QIODevice::WriteOnly)) {
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
    const bool written = file_.commit();
    Release();
    return written;
}

void OutputFile::Release() {
    numbers_.Release(number_);
    number_ = 0;
}

}  // namespace kelvane
