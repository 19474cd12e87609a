#include <gtest/gtest.h>

#include <QByteArray>

#include "fixtures/SameTimes.h"
#include "kelvane_cal/ical/TimeLines.h"

namespace kelvane::cal {
namespace {

// The property libical's parser makes of `line` in a VEVENT.
ComponentPtr ParsedByLibical(const QByteArray& line) {
    const QByteArray text = "BEGIN:VEVENT\r\n" + line + "\r\nEND:VEVENT\r\n";
    return ComponentPtr(icalparser_parse_string(text.constData()));
}

void ExpectSameProperty(icalproperty* made, icalproperty* parsed, const QByteArray& line) {
    SCOPED_TRACE(line.constData());
    ASSERT_NE(made, nullptr);
    ASSERT_NE(parsed, nullptr);
    EXPECT_EQ(icalproperty_isa(made), icalproperty_isa(parsed));
    EXPECT_EQ(icalvalue_isa(icalproperty_get_value(made)),
              icalvalue_isa(icalproperty_get_value(parsed)));
    EXPECT_STREQ(icalproperty_as_ical_string(made), icalproperty_as_ical_string(parsed));
    EXPECT_EQ(icalproperty_count_parameters(made), icalproperty_count_parameters(parsed));
    const icaltimetype is = icalvalue_get_datetimedate(icalproperty_get_value(made));
    const icaltimetype was = icalvalue_get_datetimedate(icalproperty_get_value(parsed));
    testing::ExpectSameFields(is, was);
}

TEST(TimeLines, MakesThePropertyLibicalsParserMakes) {
    for (const QByteArray line :
         {"DTSTART:20260105T100000", "DTEND:20260105T235959Z", "DTSTART:19020101T000000",
          "DTSTART:25821231T000000Z", "DTSTART;VALUE=DATE:20240229", "DTEND;VALUE=DATE:20260101",
          "DTSTART;TZID=Europe/Berlin:20260329T023000",
          "DTEND;TZID=America/Argentina/Buenos_Aires:20261025T010000",
          "DTSTART;TZID=Etc/GMT+5:20260105T100000", "DTSTART;TZID=Unknown-Zone:20260105T100000"}) {
        const PropertyPtr made = PlainTimeProperty(line);
        const ComponentPtr parsed = ParsedByLibical(line);
        ASSERT_NE(parsed, nullptr) << line.constData();
        ExpectSameProperty(made.get(),
                           icalcomponent_get_first_property(parsed.get(), ICAL_ANY_PROPERTY), line);
    }
}

TEST(TimeLines, LeavesEveryOtherFormToLibical) {
    for (const QByteArray line : {"DTSTART:20260105",
                                  "DTSTART:20260105T1000",
                                  "DTSTART:99991231T000000Z",
                                  "DTSTART:19011231T000000",
                                  "DTSTART:20261305T100000",
                                  "DTSTART:20260230T100000",
                                  "DTSTART:20260105T240000",
                                  "DTSTART:20260105T100060",
                                  "DTSTART:20260105T100000z",
                                  "DTSTART:20260105T100000Z ",
                                  "dtstart:20260105T100000",
                                  "DTSTART;VALUE=DATE-TIME:20260105T100000",
                                  "DTSTART;VALUE=DATE:20260105T100000",
                                  "DTSTART;TZID=\"Europe/Berlin\":20260105T100000",
                                  "DTSTART;TZID=Europe/Berlin:20260105T100000Z",
                                  "DTSTART;TZID=:20260105T100000",
                                  "DTSTART;X-A=1:20260105T100000",
                                  "DTSTAMP:20260105T100000Z",
                                  "DURATION:PT1H",
                                  "DTSTARTX:20260105T100000",
                                  "DTSTART"}) {
        EXPECT_EQ(PlainTimeProperty(line), nullptr) << line.constData();
    }
}

TEST(TimeLines, TellsWhichOtherLinesMayBeTimeLines) {
    EXPECT_TRUE(MayBeTimeLine("dtstart;tzid=x:20260105T100000", ICAL_DTSTART_PROPERTY));
    EXPECT_TRUE(MayBeTimeLine("DTEND;VALUE=DATE-TIME:20260105T100000", ICAL_DTEND_PROPERTY));
    EXPECT_FALSE(MayBeTimeLine("DTEND:20260105T100000", ICAL_DTSTART_PROPERTY));
    EXPECT_FALSE(MayBeTimeLine("SUMMARY:DTSTART", ICAL_DTSTART_PROPERTY));
}

}  // namespace
}  // namespace kelvane::cal
