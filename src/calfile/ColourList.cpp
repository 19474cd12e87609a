#include "calfile/ColourList.h"

namespace kelvane {

ColourListItem MakeColourListItem(const QString& name, qint16 red, qint16 green, qint16 blue,
                                  bool absolute, bool enabled) {
    ColourListItem item;
    item.Name = name;
    item.Red = red;
    item.Green = green;
    item.Blue = blue;
    item.Absolute = absolute;
    item.Enabled = enabled;
    return item;
}

ColourChoice ChoiceOf(const ColourListItem& item) {
    return ColourChoice{item.Red, item.Green, item.Blue, item.Absolute, item.Enabled};
}

void BuildColourList(ColourListTable& colourList) {
    colourList.fill(ColourListItem{});
    colourList[0] = MakeColourListItem(QStringLiteral("Back Colour"), -25, -5, 20, false, true);
    colourList[1] = MakeColourListItem(QStringLiteral("Current Date"), 100, 0, 0, false, true);
    colourList[2] = MakeColourListItem(QStringLiteral("Selected Date"), 0, 100, 0, false, true);
}

}  // namespace kelvane
