#include <gtest/gtest.h>

#include "fixtures/CalRun.h"
#include "kelvane_cal/cli/Arguments.h"

namespace kelvane::cal {
namespace {

const std::vector<OptionSpec> kOptions = {{QStringLiteral("--year"), QString(), true},
                                          {QStringLiteral("--output"), QStringLiteral("-o"), true},
                                          {QStringLiteral("--force"), QString(), false}};

TEST(Arguments, SplitsOptionsFromFileNames) {
    Arguments parsed;
    QString error;
    ASSERT_TRUE(ParseArguments({"a.cal", "--year", "2026", "-o", "out.ics", "--force"}, kOptions,
                               parsed, error));
    EXPECT_EQ(parsed.Positional, QStringList{"a.cal"});
    EXPECT_EQ(parsed.Value("--year"), "2026");
    EXPECT_EQ(parsed.Value("--output"), "out.ics");
    EXPECT_TRUE(parsed.Has("--force"));
}

TEST(Arguments, TakesValuesAfterAnEqualsSign) {
    Arguments parsed;
    QString error;
    ASSERT_TRUE(ParseArguments({"--year=2027", "--output=-"}, kOptions, parsed, error));
    EXPECT_EQ(parsed.Value("--year"), "2027");
    EXPECT_EQ(parsed.Value("--output"), "-");
}

TEST(Arguments, EndsOptionsAtADoubleDashAndKeepsALoneDash) {
    Arguments parsed;
    QString error;
    ASSERT_TRUE(ParseArguments({"-", "--", "--force"}, kOptions, parsed, error));
    EXPECT_EQ(parsed.Positional, (QStringList{"-", "--force"}));
    EXPECT_FALSE(parsed.Has("--force"));
}

TEST(Arguments, RefusesWhatItCannotTake) {
    const std::vector<std::pair<QStringList, QString>> cases = {
        {{"--colour"}, "unknown option '--colour'"},
        {{"--year"}, "--year needs a value"},
        {{"--force=yes"}, "--force takes no value"},
        {{"--year", "1", "--year=2"}, "--year is given more than once"},
        {{"-x"}, "unknown option '-x'"},
    };
    for (const auto& [words, expected] : cases) {
        Arguments parsed;
        QString error;
        EXPECT_FALSE(ParseArguments(words, kOptions, parsed, error))
            << words.join(' ').toStdString();
        EXPECT_EQ(error, expected);
    }
}

TEST(Arguments, KnowsHelpEverywhere) {
    Arguments parsed;
    QString error;
    ASSERT_TRUE(ParseArguments({"-h"}, {}, parsed, error));
    EXPECT_TRUE(parsed.Has("--help"));
}

TEST(Arguments, ReadsWholeNumbersInARange) {
    int value = 0;
    EXPECT_TRUE(ParseWholeNumber(" 12 ", 1, 12, value));
    EXPECT_EQ(value, 12);
    EXPECT_FALSE(ParseWholeNumber("13", 1, 12, value));
    EXPECT_FALSE(ParseWholeNumber("0", 1, 12, value));
    EXPECT_FALSE(ParseWholeNumber("2.5", 1, 12, value));
    EXPECT_FALSE(ParseWholeNumber("", 1, 12, value));
    EXPECT_FALSE(ParseWholeNumber("twelve", 1, 12, value));
}

TEST(Arguments, EveryHelpLineFitsEightyColumns) {
    for (const QStringList& words :
         {QStringList{"--help"}, QStringList{"check", "--help"}, QStringList{"show", "--help"},
          QStringList{"export", "--help"}, QStringList{"import", "--help"},
          QStringList{"publish", "--help"}}) {
        const testing::CalRun run = testing::RunCal(words);
        ASSERT_EQ(run.Status, kDone) << words.join(' ').toStdString();
        for (const QString& line : run.Out.split(QLatin1Char('\n'))) {
            EXPECT_LE(line.size(), 80)
                << words.join(' ').toStdString() << ": " << line.toStdString();
        }
    }
}

}  // namespace
}  // namespace kelvane::cal
