#pragma once

#include <QByteArray>
#include <QList>

namespace kelvane::testing {

// The lines of a calendar file as a test builds it, without line ends.
struct CalendarFileLines {
    // Lines 2 to 7 and 8 to 49 of a file with the default colour list.
    static constexpr int FirstSlotLine = 50;

    // A file of a leap year starting on Saturday, no content on any date.
    static CalendarFileLines Empty() {
        CalendarFileLines file;
        file.lines = {"Marrowby Kelvane 2000 File", " 2000 ", " 7 ", " 1 ", " 1 ", "Arial", " 9 "};
        file.lines << "Back Colour"
                   << "0,1,-25,-5,20";
        file.lines << "Current Date"
                   << "0,1,100,0,0";
        file.lines << "Selected Date"
                   << "0,1,0,100,0";
        for (int i = 3; i < 21; ++i) {
            file.lines << ""
                       << "0,0,0,0,0";
        }
        for (int slot = 1; slot <= 366; ++slot) {
            file.lines << " 0 ";
        }
        return file;
    }

    // Replaces the flag line of an empty day slot (1..366) with a whole slot of
    // content. Fill the later slots first: filling moves the lines after it.
    void FillSlot(int slot, const QList<QByteArray>& content) {
        const int index = FirstSlotLine - 1 + slot - 1;
        lines.removeAt(index);
        for (qsizetype i = content.size() - 1; i >= 0; --i) {
            lines.insert(index, content[i]);
        }
    }

    QByteArray Bytes(const QByteArray& lineEnd = "\r\n") const {
        QByteArray bytes;
        for (const QByteArray& line : lines) {
            bytes += line + lineEnd;
        }
        return bytes;
    }

    QList<QByteArray> lines;
};

}  // namespace kelvane::testing
