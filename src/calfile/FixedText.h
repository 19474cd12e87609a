#pragma once

#include <QString>

#include "calfile/Conversions.h"

namespace kelvane {

// A text field of exactly N characters (UTF-16 code units): longer texts are
// cut, shorter ones are padded with blanks, as the document's records keep
// their texts. A cut never splits a grapheme (see CutText): what would not fit
// goes whole and blanks take its place.
template <int N>
class FixedText {
  public:
    static constexpr int Length = N;

    FixedText() : text_(N, QLatin1Char(' ')) {}
    FixedText(const QString& text) { *this = text; }  // NOLINT: converts like an assignment

    FixedText& operator=(const QString& text) {
        text_ = CutText(text, N).leftJustified(N, QLatin1Char(' '));
        return *this;
    }

    // All N characters, padding included.
    const QString& Value() const { return text_; }
    // The text without its leading and trailing blanks.
    QString Trimmed() const { return Trim(text_); }
    bool IsBlank() const {
        for (const QChar c : text_) {
            if (c != u' ') {
                return false;
            }
        }
        return true;
    }

    friend bool operator==(const FixedText&, const FixedText&) = default;

  private:
    QString text_;
};

}  // namespace kelvane
