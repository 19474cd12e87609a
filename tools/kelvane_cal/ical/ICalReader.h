#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <QStringList>

#include <string>
#include <utility>
#include <vector>

#include "kelvane_cal/ical/ContentLines.h"
#include "kelvane_cal/ical/LibIcal.h"
#include "kelvane_cal/ical/TimeLines.h"

namespace kelvane::cal {

// Reads an iCalendar file one component at a time: each VEVENT, VTIMEZONE and
// so on inside the file's VCALENDAR is handed to libical on its own, so that a
// file of any size is read in the memory its largest component needs. This
// class only unfolds the lines and follows BEGIN and END; libical parses.
// An error libical marks in a property that says when an event happens, or in
// a line that is no property, stops the reading with the line; libical leaves
// out any other property it cannot read, which becomes a warning.
// A reader for the import leaves out the lines of an event that the import
// never reads and libical always takes (see IsUnreadAndSound), and makes the
// properties of an event's first plain DTSTART and DTEND itself (see
// PlainTimeProperty).
// Lines that are not UTF-8 are read as Windows-1252, and blank lines inside a
// folded line are skipped; each of these makes one warning about the text.
class ICalendarReader {
  public:
    enum class Lines { All, ForImport };
    explicit ICalendarReader(QIODevice& device, Lines lines = Lines::All);

    // The next top-level component and the line it begins on; false at the end
    // of the file and at the first problem.
    bool Next(ComponentPtr& component, int& line);

    // The value of the first `name` property (in capitals) of the component
    // Next gave last, as the file writes it; properties of the components
    // nested in it are passed over. Empty when it has none.
    QString RawValue(const QByteArray& name) const;

    bool Failed() const { return problemLine_ > 0; }
    int ProblemLine() const { return problemLine_; }
    const QString& Problem() const { return problem_; }
    // The lines left out so far, with the reasons: libical's, or "RDATE has no
    // value" for an empty RDATE or EXDATE.
    const std::vector<std::pair<int, QString>>& Warnings() const { return warnings_; }
    // What was made of the file's text so far, such as "line 4: a line that is
    // not UTF-8 is read as Windows-1252", one for each kind, naming its first
    // line and counting the others.
    QStringList TextWarnings() const;

  private:
    enum class Place { BeforeCalendar, InCalendar, InComponent, AfterCalendar };
    using NumberedLine = std::pair<int, QByteArray>;
    // Lines of one kind that the text warnings name: the first and how many.
    struct LineTally {
        int First = 0;
        int Count = 0;
        void Add(int line, int count = 1);
        void Report(const QString& what, QStringList& warnings) const;
    };

    bool TakeRawLine(QByteArray& line);
    bool ReadPhysicalLine(QByteArray& line, int& number);
    bool ReadNonBlankLine(QByteArray& line, int& number);
    bool NextContentLine(QByteArray& line, int& number);
    void MakeUtf8(QByteArray& line, int number);
    bool PassesOverEmpty(const QByteArray& line, int number);
    bool TakeLine(const QByteArray& line, int number, ComponentPtr& component, int& begunOn);
    bool TakeCalendarLine(const QByteArray& line, int number);
    bool TakeComponentLine(const QByteArray& line, int number, ComponentPtr& component,
                           int& begunOn);
    icalcomponent* AddToParser(const QByteArray& line);
    bool LeavesOutOfParsing(const QByteArray& line);
    bool TakeTimeLine(const QByteArray& line);
    void AddMadeTimes(icalcomponent* component);
    bool FinishComponent(icalcomponent* parsed, ComponentPtr& component, int& begunOn);
    // False when the error stops the reading.
    bool TakeError(const QByteArray& kind, int number, const QByteArray& line,
                   const QString& error);
    bool Fail(int line, const QString& problem);
    bool FailAtEnd();

    QIODevice& device_;
    Lines lines_;
    QByteArray chunk_;  // read from the device, from chunkAt_ on not yet taken
    qsizetype chunkAt_ = 0;
    int physicalLine_ = 0;
    QByteArray pending_;
    int pendingNumber_ = 0;
    bool havePending_ = false;
    bool sawText_ = false;  // a line that is not blank was read
    LineTally blankInFold_;
    LineTally notUtf8_;

    Place place_ = Place::BeforeCalendar;
    ParserPtr parser_;
    std::string lineForParser_;
    // The properties made from plain time lines of the component being read,
    // and the kinds of time line it has had (1 for DTSTART, 2 for DTEND).
    std::vector<PropertyPtr> madeTimes_;
    int timeKindsSeen_ = 0;
    std::vector<std::pair<QByteArray, int>> open_;  // component names and their lines
    std::vector<NumberedLine> componentLines_;      // to find the line of an error
    int lastLine_ = 0;

    int problemLine_ = 0;
    QString problem_;
    std::vector<std::pair<int, QString>> warnings_;
};

}  // namespace kelvane::cal
