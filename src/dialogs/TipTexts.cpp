#include "dialogs/TipTexts.h"

namespace kelvane {

QString TipText(int n) {
    switch (n) {
        case 1:
            return QStringLiteral(
                "The toolbar gives you access to most of the functionality of the Kelvane. The "
                "toolbar is your friend.");
        case 2:
            return QStringLiteral(
                "Left-Click on a date, then use the 'tools >> edit' function to set titles, "
                "schedules, and notes to that date.");
        case 3:
            return QStringLiteral(
                "Use the Colour Fill procedure to set colours to multiple dates.");
        case 4:
            return QStringLiteral(
                "When you resize the Kelvane window, the calender resizes also. The bigger the "
                "calender the more text you are able to see.");
        case 5:
            return QStringLiteral(
                "Go into 'View >> Options' to set the Font and other attributes to your calender.");
        case 6:
            return QStringLiteral(
                "Absolute colours are fixed, while non-absolute colours will vary depending on "
                "your Desktop Colour Scheme.");
        case 7:
            return QStringLiteral(
                "To get a bitmap of the calender, use the 'File >> Save Cal' Image'.");
        case 8:
            return QStringLiteral(
                "Did you see the RED moon on the morning of the 17th of July 2000... it was quite "
                "BUZZY... Witnesses a biblical prophecy right before our eyes!!");
        case 9:
            return QStringLiteral(
                "You can load a 'cal' file from the Command line i.e.: 'Tivrel MyCalender' You "
                "could create a batch file for this so that you have a shortcut to load you "
                "calender file.");
        default:
            return QStringLiteral(
                "You can copy text off the 'Text Boxes.' Select the text you want to copy and "
                "then copy it (via Mouse, Keyboard).");
    }
}

}  // namespace kelvane
