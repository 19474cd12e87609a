#include "calendar/TextFitting.h"

#include <algorithm>
#include <vector>

#include "calfile/Conversions.h"
#include "calfile/Graphemes.h"

namespace kelvane {

namespace {

// The places a text may be cut: between graphemes, so that a letter keeps its
// marks and an emoji sequence stays whole. Cut i keeps the first Length(i)
// code units. Plain Latin text may be cut after every code unit.
class CutPoints {
  public:
    explicit CutPoints(const QString& text) : plain_(IsOneUnitPerGrapheme(text)) {
        if (!plain_) {
            lengths_ = GraphemeEnds(text);
        }
        count_ = plain_ ? text.size() : static_cast<qsizetype>(lengths_.size());
    }

    // Cuts 1..Count() keep at least one grapheme; cut 0 keeps none.
    qsizetype Count() const { return count_; }
    qsizetype Length(qsizetype cut) const {
        return !plain_ && cut > 0 ? lengths_[static_cast<std::size_t>(cut - 1)] : cut;
    }

  private:
    bool plain_ = true;
    std::vector<qsizetype> lengths_;
    qsizetype count_ = 0;
};

// The last cut whose text fits. Widths of longer starts are never smaller than
// those of shorter ones, so cuts are probed at doubling lengths and the last
// step is a bisection between a cut that fits and one that does not. A caller
// only asking whether the whole text fits gets a smaller cut as soon as that is
// known to be no.
qsizetype LastFittingCut(const DrawingSurface& surface, const QString& text, double width,
                         const CutPoints& cuts, bool onlyAskingForTheWhole) {
    auto fits = [&](qsizetype cut) {
        return surface.TextWidth(text.left(cuts.Length(cut))) <= width;
    };
    const qsizetype count = cuts.Count();
    qsizetype fitting = 0;
    qsizetype tooLong = count + 1;
    for (qsizetype probe = std::min<qsizetype>(8, count); probe < count; probe *= 2) {
        if (!fits(probe)) {
            tooLong = probe;
            break;
        }
        fitting = probe;
    }
    if (tooLong > count) {
        if (fits(count)) {
            return count;
        }
        tooLong = count;
    }
    if (onlyAskingForTheWhole) {
        return tooLong - 1;  // below count: the whole text does not fit
    }
    while (tooLong - fitting > 1) {
        const qsizetype middle = fitting + (tooLong - fitting) / 2;
        (fits(middle) ? fitting : tooLong) = middle;
    }
    return fitting;
}

}  // namespace

QString FitText(const DrawingSurface& surface, const QString& text, double width) {
    if (width <= 0 || text.isEmpty()) {
        return text;
    }
    const CutPoints cuts(text);
    return text.left(cuts.Length(LastFittingCut(surface, text, width, cuts, false)));
}

QString FitTextByCharacters(const DrawingSurface& surface, const QString& text, double width) {
    if (width <= 0) {
        return text;
    }
    QString fitted = text;
    while (!fitted.isEmpty() && surface.TextWidth(fitted) > width) {
        fitted.truncate(PreviousGraphemeStart(fitted, fitted.size()));
    }
    return fitted;
}

bool TextFits(const DrawingSurface& surface, const QString& text, double width) {
    if (text.isEmpty()) {
        return surface.TextWidth(text) <= width;
    }
    const CutPoints cuts(text);
    return LastFittingCut(surface, text, width, cuts, true) == cuts.Count();
}

QString CutAtLastBlank(const QString& text) {
    if (text.isEmpty()) {
        return QStringLiteral("0");
    }
    // A blank that carries a combining mark is no place to break.
    qsizetype blank = text.lastIndexOf(QLatin1Char(' '));
    while (blank >= 0 && !IsGraphemeBoundary(text, blank + 1)) {
        blank = blank == 0 ? -1 : text.lastIndexOf(QLatin1Char(' '), blank - 1);
    }
    return blank < 0 ? text : text.left(blank + 1);
}

double CentreOffset(const DrawingSurface& surface, double width, const QString& text) {
    return RoundHalfEven(width / 2 - surface.TextWidth(text) / 2);
}

}  // namespace kelvane
