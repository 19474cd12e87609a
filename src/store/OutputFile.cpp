#include "store/OutputFile.h"

namespace kelvane {

OutputFile::~OutputFile() {
    if (number_ != 0) {
        file_.Cancel();
        Release();
    }
}

qint16 OutputFile::OpenForOutput(const QString& fileName) {
    error_.clear();
    if (number_ != 0 || fileName.isEmpty()) {
        return 0;
    }
    const qint16 number = numbers_.Take();
    if (number == 0) {
        error_ = QStringLiteral("too many files are open");
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

QString OutputFile::ErrorString() const {
    return error_.isEmpty() ? file_.ErrorString() : error_;
}

void OutputFile::Release() {
    numbers_.Release(number_);
    number_ = 0;
}

}  // namespace kelvane
