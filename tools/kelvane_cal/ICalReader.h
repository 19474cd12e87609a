#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>

#include <utility>
#include <vector>

#include "kelvane_cal/LibIcal.h"

namespace kelvane::cal {

// Reads an iCalendar file one component at a time: each VEVENT, VTIMEZONE and
// so on inside the file's VCALENDAR is handed to libical on its own, so that a
// file of any size is read in the memory its largest component needs. This
// class only unfolds the lines and follows BEGIN and END; libical parses.
// An error libical marks in a property that says when an event happens, or in
// a line that is no property, stops the reading with the line; libical leaves
// out any other property it cannot read, which becomes a warning.
class ICalendarReader {
  public:
    explicit ICalendarReader(QIODevice& device);

    // The next top-level component and the line it begins on; false at the end
    // of the file and at the first problem.
    bool Next(ComponentPtr& component, int& line);

    bool Failed() const { return problemLine_ > 0; }
    int ProblemLine() const { return problemLine_; }
    const QString& Problem() const { return problem_; }
    // The lines left out so far, with libical's reasons.
    const std::vector<std::pair<int, QString>>& Warnings() const { return warnings_; }

  private:
    enum class Place { BeforeCalendar, InCalendar, InComponent, AfterCalendar };
    using NumberedLine = std::pair<int, QByteArray>;

    bool ReadPhysicalLine(QByteArray& line, int& number);
    bool NextContentLine(QByteArray& line, int& number);
    bool TakeLine(const QByteArray& line, int number, ComponentPtr& component, int& begunOn);
    bool TakeCalendarLine(const QByteArray& line, int number);
    bool TakeComponentLine(const QByteArray& line, int number, ComponentPtr& component,
                           int& begunOn);
    bool FinishComponent(icalcomponent* parsed, ComponentPtr& component, int& begunOn);
    // False when the error stops the reading.
    bool TakeError(int number, const QByteArray& line, const QString& error);
    bool Fail(int line, const QString& problem);
    bool FailAtEnd();

    QIODevice& device_;
    int physicalLine_ = 0;
    QByteArray pending_;
    int pendingNumber_ = 0;
    bool havePending_ = false;

    Place place_ = Place::BeforeCalendar;
    ParserPtr parser_;
    std::vector<std::pair<QByteArray, int>> open_;  // component names and their lines
    std::vector<NumberedLine> componentLines_;      // to find the line of an error
    int lastLine_ = 0;

    int problemLine_ = 0;
    QString problem_;
    std::vector<std::pair<int, QString>> warnings_;
};

// The first error libical marked in a component or its parts, or nothing.
QString FirstParseError(icalcomponent* component);

}  // namespace kelvane::cal
