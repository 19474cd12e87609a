#pragma once

#include <QString>

#include <utility>

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
    FixedText(const QString& text) { *this = text; }        // NOLINT: converts like an assignment
    FixedText(QString&& text) { *this = std::move(text); }  // NOLINT: the same

    FixedText& operator=(const QString& text) {
        // A text of exactly N is kept as it is, without cutting or padding it.
        text_ = text.size() == N ? text : CutText(text, N).leftJustified(N, QLatin1Char(' '));
        return *this;
    }
    FixedText& operator=(QString&& text) {
        if (text.size() == N) {
            text_ = std::move(text);
        } else {
            *this = std::as_const(text);
        }
        return *this;
    }

    // Rewrites all N characters through `write(char16_t* text)`, which sets
    // every one of them: in the text's own memory when no copy shares it.
    template <typename Write>
    void Overwrite(Write&& write) {
        if (text_.size() != N) {  // a moved-from text
            text_.resize(N);
        }
        write(reinterpret_cast<char16_t*>(text_.data()));
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
