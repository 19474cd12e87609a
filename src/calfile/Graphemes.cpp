#include "calfile/Graphemes.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace kelvane {

namespace {

// Below this no code unit joins its neighbour, apart from CR before LF.
constexpr char16_t kFirstCombiningMark = 0x0300;

bool StandsAlone(QChar unit) {
    return unit.unicode() < kFirstCombiningMark && unit != u'\r';
}

QTextBoundaryFinder GraphemeFinder(QStringView text) {
    return QTextBoundaryFinder(QTextBoundaryFinder::Grapheme, text.data(), text.size());
}

}  // namespace

bool IsOneUnitPerGrapheme(QStringView text) {
    return std::all_of(text.begin(), text.end(), StandsAlone);
}

std::vector<qsizetype> GraphemeEnds(QStringView text) {
    std::vector<qsizetype> ends;
    QTextBoundaryFinder finder = GraphemeFinder(text);
    for (qsizetype end = finder.toNextBoundary(); end > 0; end = finder.toNextBoundary()) {
        ends.push_back(end);
    }
    return ends;
}

bool IsGraphemeBoundary(QStringView text, qsizetype position) {
    if (position <= 0 || position >= text.size()) {
        return true;
    }
    if (StandsAlone(text[position - 1]) && StandsAlone(text[position])) {
        return true;
    }
    QTextBoundaryFinder finder = GraphemeFinder(text);
    finder.setPosition(position);
    return finder.isAtBoundary();
}

qsizetype GraphemeCut(QStringView text, qsizetype length) {
    if (length >= text.size()) {
        return text.size();
    }
    if (length <= 0) {
        return 0;
    }
    if (IsGraphemeBoundary(text, length)) {
        return length;
    }
    QTextBoundaryFinder finder = GraphemeFinder(text);
    finder.setPosition(length);
    return std::max<qsizetype>(finder.toPreviousBoundary(), 0);
}

qsizetype NextGraphemeEnd(QStringView text, qsizetype position) {
    if (position >= text.size()) {
        return text.size();
    }
    position = std::max<qsizetype>(position, 0);
    if (IsGraphemeBoundary(text, position + 1)) {
        return position + 1;
    }
    QTextBoundaryFinder finder = GraphemeFinder(text);
    finder.setPosition(position + 1);
    const qsizetype end = finder.toNextBoundary();
    return end < 0 ? text.size() : end;
}

qsizetype PreviousGraphemeStart(QStringView text, qsizetype position) {
    if (position <= 0) {
        return 0;
    }
    position = std::min(position, text.size());
    return GraphemeCut(text, position - 1);
}

}  // namespace kelvane
