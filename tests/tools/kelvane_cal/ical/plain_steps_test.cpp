#include <gtest/gtest.h>

#include <QByteArray>
#include <QString>

#include "kelvane_cal/ical/PlainSteps.h"

namespace kelvane::cal {
namespace {

constexpr int kMostCompared = 80;

icaltimetype TimeOf(const char* text) {
    return icaltime_from_string(text);
}

// The occurrences libical's iterator and PlainSteps give, as text, up to
// kMostCompared of them.
QString Occurrences(const icalrecurrencetype& rule, const icaltimetype& start, bool plain) {
    QString listed;
    RecurIteratorPtr iterator(icalrecur_iterator_new(rule, start));
    PlainSteps steps(rule, start);
    for (int i = 0; i < kMostCompared; ++i) {
        const icaltimetype next = plain ? steps.Next() : icalrecur_iterator_next(iterator.get());
        if (icaltime_is_null_time(next)) {
            break;
        }
        listed += QString::fromUtf8(icaltime_as_ical_string(next)) +
                  (next.zone == nullptr ? QStringLiteral(" ") : QStringLiteral("@ "));
    }
    return listed;
}

TEST(PlainSteps, GivesWhatLibicalsIteratorGives) {
    const char* starts[] = {"20260105T091500", "20260228T233000", "20241231", "20260329T023000",
                            "17530101T000000", "25821215T120000", "20260301"};
    const char* untils[] = {
        "",         "20260301",       "20260301T091500", "20260301T091459", "20260228T233000Z",
        "20270101", "25830101T000000"};
    int compared = 0;
    for (const char* startText : starts) {
        const icaltimetype start = TimeOf(startText);
        for (const char* frequency : {"DAILY", "WEEKLY"}) {
            for (const char* interval : {"", ";INTERVAL=1", ";INTERVAL=3"}) {
                for (const char* until : untils) {
                    for (const char* count : {"", ";COUNT=1", ";COUNT=5", ";COUNT=200"}) {
                        if (*until != '\0' && *count != '\0') {
                            continue;
                        }
                        const QByteArray text =
                            QByteArray("FREQ=") + frequency + interval + count +
                            (*until != '\0' ? QByteArray(";UNTIL=") + until : QByteArray());
                        const icalrecurrencetype rule = icalrecurrencetype_from_string(text);
                        ASSERT_TRUE(PlainSteps::Fits(rule, start)) << text.constData();
                        EXPECT_EQ(Occurrences(rule, start, true), Occurrences(rule, start, false))
                            << text.constData() << " from " << startText;
                        ++compared;
                    }
                }
            }
        }
    }
    EXPECT_GT(compared, 300);
}

TEST(PlainSteps, LeavesRulesWithMoreToThemToLibical) {
    const icaltimetype start = TimeOf("20260105T091500");
    for (const char* text :
         {"FREQ=WEEKLY;BYDAY=MO,WE", "FREQ=MONTHLY", "FREQ=DAILY;BYHOUR=9,10", "FREQ=HOURLY",
          "FREQ=DAILY;BYMONTH=1", "FREQ=YEARLY", "FREQ=DAILY;BYSETPOS=1"}) {
        EXPECT_FALSE(PlainSteps::Fits(icalrecurrencetype_from_string(text), start)) << text;
    }
    const icalrecurrencetype daily = icalrecurrencetype_from_string("FREQ=DAILY");
    EXPECT_FALSE(PlainSteps::Fits(daily, TimeOf("17500105T091500")));
    EXPECT_FALSE(PlainSteps::Fits(daily, TimeOf("26000105T091500")));
    EXPECT_FALSE(PlainSteps::Fits(daily, icaltime_null_time()));
}

}  // namespace
}  // namespace kelvane::cal
