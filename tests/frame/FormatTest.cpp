#include <gtest/gtest.h>

#include "frame/Format.h"

namespace qvt {
namespace {

std::string narrow(const String& s) { return std::string(s.begin(), s.end()); }

struct Row {
    Variant value;
    const char16_t* pattern;
    const char16_t* expected;
};

Variant D(double x) { return Variant(x); }
Variant L(int32_t x) { return Variant(x); }
Variant S(const char16_t* s) { return Variant(s); }
Variant Dt(double x) { return Variant::date(x); }

void runTable(const std::vector<Row>& rows) {
    for (const Row& r : rows) {
        String got;
        try {
            got = FormatText(r.value, r.pattern);
        } catch (const RuntimeError& e) {
            got = u"<error " + String(u"") + char16_t(u'0' + e.number() % 10) + u">";
        }
        EXPECT_EQ(narrow(got), narrow(r.expected)) << "pattern \"" << narrow(r.pattern) << "\"";
    }
}

// 2 Jan 2000 13:45:06 (a Sunday).
const double kJan2 = 36527 + (13 * 3600 + 45 * 60 + 6) / 86400.0;

TEST(Format, LibraryPatterns) {
    runTable({
        {L(1234567), u"#,##0", u"1,234,567"},
        {L(0), u"#,##0", u"0"},
        {L(999), u"#,##0", u"999"},
        {D(-1234.4), u"#,##0", u"-1,234"},
        {L(-1234), u"#,##0;-#,##0", u"-1,234"},
        {L(1234), u"#,##0;-#,##0", u"1,234"},
        {D(1234.56789012), u"#,##0.000 000", u"1,234.567 890"},
        {D(0.5), u"#,##0.000 000", u"0.500 000"},
        {D(12.5), u" ##,##0.0##", u" 12.5"},
        {D(12345.6789), u" ##,##0.0##", u" 12,345.679"},
        {D(0.0004), u" ##,##0.0##", u" 0.0"},
        {L(5), u"0000", u"0005"},
        {L(12345), u"0000", u"12345"},
        {L(12), u"00000", u"00012"},
        {Dt(kJan2), u"hh:nn:ss", u"13:45:06"},
        {Dt(kJan2), u"yyyy/mm/dd hh:nn:ss", u"2000/01/02 13:45:06"},
        {Dt(kJan2), u"yyyy/mm/dd hh:nn", u"2000/01/02 13:45"},
        {Dt(kJan2), u"yy/mm/dd hhnn", u"00/01/02 1345"},
        {Dt(kJan2), u"yyyymmddhhnnss", u"20000102134506"},
        {Dt(kJan2), u"ddhhnn", u"021345"},
    });
}

TEST(Format, DigitPlaceholders) {
    runTable({
        {L(1), u"#", u"1"},           {L(0), u"#", u""},
        {L(0), u"0", u"0"},           {L(1), u"00", u"01"},
        {L(1), u"#.#", u"1."},        {L(0), u"#.#", u"."},
        {L(1), u"0.0", u"1.0"},       {L(1), u"#00000000", u"00000001"},
        {L(1), u"000###", u"000001"}, {L(1), u"#00##00#0", u"00000001"},
        {L(17), u"#0", u"17"},        {L(4711), u"#0", u"4711"},
        {L(17), u"#000", u"017"},     {L(17), u"#0.00", u"17.00"},
        {L(17), u"#.00", u"17.00"},   {D(0.17), u"#.00", u".17"},
        {D(1.7), u"#.00", u"1.70"},   {L(17), u"#3", u"173"},
        {L(17), u"#3.33", u"173.33"}, {D(1.7), u"#0", u"2"},
        {D(1.23456789), u"0#.0#0#0#0#0", u"01.234567890"},
        {D(9.8), u"#0.#0#0#0#0#", u"9.80000000"},
        {D(0.00010705), u"#0.##########", u"0.00010705"},
        {D(9.9999999), u"#0.000000", u"10.000000"},
        {D(12.5), u".00", u"12.50"},
        {D(-0.1), u".#", u"-.1"},
        {D(0.0049), u"#.##", u"."},
        {D(0.0995), u"#.##", u".1"},
        {D(8.0995), u"#.##", u"8.1"},
        {L(5551234), u"000-0000", u"555-1234"},
        {D(5551234567.0), u"(000) 000-0000", u"(555) 123-4567"},
    });
}

TEST(Format, RoundingIsHalfAwayFromZeroOnDecimalDigits) {
    runTable({
        {D(2.5), u"0", u"3"},       {D(3.5), u"0", u"4"},         {D(-2.5), u"0", u"-3"},
        {D(0.125), u"0.00", u"0.13"}, {D(1.005), u"0.00", u"1.01"}, {D(1.73245), u"0.0000", u"1.7325"},
        {Variant(2.5f), u"0", u"3"}, {Variant::currency(12345), u"0.000", u"1.235"},
        {D(0.5), u"#", u"1"},       {D(0.4), u"#", u""},
    });
}

TEST(Format, GroupingAndScaling) {
    runTable({
        {L(100000), u"#,###,###,###", u"100,000"},
        {L(1), u"0,000,000,000", u"0,000,000,001"},
        {L(123456789), u"#,#.#", u"123,456,789."},
        {L(123456789), u"###, ###, ###", u"123, 456, 789"},
        {D(1.0), u"#,##0.00", u"1.00"},
        {L(1234567), u"#,##0,", u"1,235"},
        {L(1234567), u"0,,.0", u"1.2"},
        {L(1500), u"0,", u"2"},
        {D(-1234567.891), u"#,##0.00", u"-1,234,567.89"},
    });
}

TEST(Format, PercentAndScientific) {
    runTable({
        {D(0.1234), u"0.0%", u"12.3%"},
        {L(1), u"0%", u"100%"},
        {D(1.7), u"0.0000E-000", u"1.7000E000"},
        {D(1.7), u"0.0000e-1", u"1.7000e01"},
        {D(86.936849), u"#0.000000000000e-000", u"86.936849000000e000"},
        {D(1.73245), u"0.0000E+000", u"1.7325E+000"},
        {D(1.7), u"0.0000e+0#", u"1.7000e+0"},
        {D(100.0001), u"0.0000E+0", u"1.0000E+2"},
        {D(1000001), u"0.0000e+1", u"1.0000e+61"},
        {D(450.0001e43), u"#000.0000e+0", u"4500.0010e+42"},
        {D(0.0001e-11), u"##00.0000e-0", u"1000.0000e-18"},
        {D(47.11), u".0000E+0", u".4711E+2"},
        {D(3.0401e-13), u"#####.####e-0%", u"30401.e-15%"},
        {D(0.000123), u"0.00E+00", u"1.23E-04"},
        {D(9.999), u"0.00E+00", u"1.00E+01"},
        {L(0), u"0.00E+00", u"0.00E+00"},
        {D(-12345), u"0.0E+0", u"-1.2E+4"},
    });
}

TEST(Format, SectionsAndLiterals) {
    runTable({
        {L(1), u"\"pos\";\"neg\"", u"pos"},
        {L(0), u"\"pos\";\"neg\"", u"pos"},
        {L(-1), u"\"pos\";\"neg\"", u"neg"},
        {L(0), u"\"pos\";\"neg\";\"zero\"", u"zero"},
        {L(-1), u"\"pos\";\"neg\";\"zero\"", u"neg"},
        {L(-5), u"$#,##0;($#,##0)", u"($5)"},
        {L(-5), u"$#,##0", u"-$5"},
        {L(-5), u"0;;\\Z", u"-5"},
        {L(0), u"0;;\\Z", u"Z"},
        {L(1), u"00\\c\\o\\p\\y", u"01copy"},
        {L(1), u"##abcdefghijklmnopqrstuvwxyz", u"1abcdefghijklmnopqrstuvwxyz"},
        {L(1), u"#;-#", u"1"},
        {L(-1), u"#;-#", u"-1"},
        {D(-1.57), u"#.##", u"-1.57"},
        {L(7), u"\"Total: \"0", u"Total: 7"},
    });
}

TEST(Format, NamedNumberFormats) {
    runTable({
        {L(1), u"General Number", u"1"},    {D(1234.5), u"General Number", u"1234.5"},
        {L(1), u"Percent", u"100.00%"},     {L(0), u"Percent", u"0.00%"},
        {L(1), u"Standard", u"1.00"},       {D(1234567.891), u"Standard", u"1,234,567.89"},
        {L(1), u"Scientific", u"1.00E+00"}, {L(0), u"Scientific", u"0.00E+00"},
        {D(1234.5), u"Fixed", u"1234.50"},  {D(-0.5), u"Fixed", u"-0.50"},
        {D(1234.5), u"Currency", u"$1,234.50"}, {D(-1234.5), u"Currency", u"($1,234.50)"},
        {L(1), u"True/False", u"True"},     {L(0), u"True/False", u"False"},
        {L(1), u"On/Off", u"On"},           {L(0), u"On/Off", u"Off"},
        {L(-3), u"Yes/No", u"Yes"},         {L(0), u"yes/no", u"No"},
        {Variant(true), u"True/False", u"True"},
        {S(u"1234.5"), u"#,##0.0", u"1,234.5"},
        {S(u"abc"), u"#,##0.0", u"abc"},
    });
}

TEST(Format, DatePatterns) {
    const double t = 2.525;  // 1 Jan 1900 12:36
    runTable({
        {Dt(t), u"am/pm", u"pm"},     {Dt(t), u"AM/PM", u"PM"},       {Dt(t), u"A/P", u"P"},
        {Dt(t), u"a/p", u"p"},        {Dt(t), u"q", u"1"},            {Dt(t), u"d", u"1"},
        {Dt(t), u"dd", u"01"},        {Dt(t), u"ddd", u"Mon"},        {Dt(t), u"dddd", u"Monday"},
        {Dt(t), u"mmm", u"Jan"},      {Dt(t), u"mmmm", u"January"},   {Dt(t), u"y", u"1"},
        {Dt(t), u"yy", u"00"},        {Dt(t), u"yyy", u"001"},        {Dt(t), u"yyyy", u"1900"},
        {Dt(t), u"dd mm yyyy hh:mm:ss", u"01 01 1900 12:36:00"},
        {Dt(t), u"dd mm yyyy mm", u"01 01 1900 01"},
        {Dt(t), u"mm :ss:mm", u"01 :00:01"},
        {Dt(t), u"dd:hh :mm:mm", u"01:12 :36:01"},
        {Dt(2.725), u"hh:nn:ss A/P", u"05:24:00 P"},
        {Dt(40531.0), u"dddd", u"Sunday"},
        {Dt(kJan2), u"h:n:s", u"13:45:6"},
        {Dt(kJan2), u"h AMPM", u"1 PM"},
        {Dt(36527), u"hh AM/PM", u"12 AM"},
        {Dt(kJan2), u"m/d/yy", u"1/2/00"},
        {Dt(kJan2), u"dddd, mmmm d, yyyy", u"Sunday, January 2, 2000"},
        {Dt(kJan2), u"\"Day \"d", u"Day 2"},
        {Dt(kJan2), u"w", u"1"},
        {Dt(kJan2), u"ww", u"2"},
        {Dt(36892), u"ww", u"1"},
        {L(36527), u"yyyy-mm-dd", u"2000-01-02"},
        {S(u"1/2/2000"), u"yyyy", u"2000"},
        {S(u"not a date"), u"yyyy", u"not a date"},
        {Dt(-1.25), u"yyyy/mm/dd hh:nn", u"1899/12/29 06:00"},
        {Dt(kJan2), u"ddddd", u"1/2/2000"},
        {Dt(kJan2), u"ttttt", u"1:45:06 PM"},
        {Dt(kJan2), u"c", u"1/2/2000 1:45:06 PM"},
    });
}

TEST(Format, NamedDateFormats) {
    runTable({
        {Dt(2.525), u"short time", u"12:36"},
        {Dt(2.525), u"medium time", u"12:36 PM"},
        {Dt(2.525), u"long time", u"12:36:00 PM"},
        {Dt(kJan2), u"Long Date", u"Sunday, January 2, 2000"},
        {Dt(kJan2), u"Medium Date", u"02-Jan-00"},
        {Dt(kJan2), u"Short Date", u"1/2/2000"},
        {Dt(kJan2), u"General Date", u"1/2/2000 1:45:06 PM"},
        {Dt(36527), u"General Date", u"1/2/2000"},
        {Dt(0.5), u"General Date", u"12:00:00 PM"},
        {Dt(0), u"General Date", u"12:00:00 AM"},
    });
}

TEST(Format, StringPatterns) {
    const Variant s = S(u"testing");
    runTable({
        {s, u"", u"testing"},            {s, u"@", u"testing"},
        {s, u"&", u"testing"},           {s, u"\\x@\\x@", u"xtxesting"},
        {s, u"@\\x", u"txesting"},       {s, u"@@@@@@@@", u" testing"},
        {s, u"@\\x@@@@@@@", u" xtesting"}, {s, u"&&&&&&&&", u"testing"},
        {s, u">&&", u"TESTING"},         {s, u"<&&", u"testing"},
        {S(u"ab"), u"!@@@@", u"ab  "},   {S(u"ab"), u"@@@@", u"  ab"},
        {S(u"5551234"), u"@@@-@@@@", u"555-1234"},
        {S(u"MiXeD"), u"<@", u"mixed"},
        {L(1), u"<&>&", u"1"},
        {S(u""), u"@;\"empty\"", u"empty"},
    });
}

TEST(Format, ValuesWithoutPattern) {
    runTable({
        {L(1), u"", u"1"}, {D(1.5), u"", u"1.5"}, {Variant(true), u"", u"True"}, {Variant(), u"", u""},
        {Dt(36527), u"", u"1/2/2000"}, {S(u"x"), u"", u"x"},
    });
}

TEST(Format, NullAndBadValues) {
    EXPECT_TRUE(Format(Variant::null(), u"0.00").isNull());
    EXPECT_EQ(narrow(FormatText(Variant::null(), u"0;-0;\\z;\\n\\u\\l\\l")), "null");
    try {
        FormatText(Variant::null(), u"0.00");
        ADD_FAILURE() << "Format$ of Null must raise";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), errInvalidUseOfNull);
    }
    try {
        FormatText(Variant::vector({L(1)}), u"0");
        ADD_FAILURE() << "an array must raise";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), errTypeMismatch);
    }
    try {
        FormatText(L(1), u"0", 9);
        ADD_FAILURE() << "a bad first day of the week must raise";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), errInvalidCall);
    }
}

TEST(Format, WeekOfYearRules) {
    // 1 Jan 2005 is a Saturday.
    const double jan1 = 38353, jan3 = 38355;
    EXPECT_EQ(weekOfYear(jan1, vbSunday, vbFirstJan1), 1);
    EXPECT_EQ(weekOfYear(jan3, vbSunday, vbFirstJan1), 2);
    EXPECT_EQ(weekOfYear(jan1, 2, vbFirstFourDays), 53);  // belongs to 2004's last week
    EXPECT_EQ(weekOfYear(jan3, 2, vbFirstFourDays), 1);
    EXPECT_EQ(weekOfYear(jan1, vbSunday, vbFirstFullWeek), 52);
}

}  // namespace
}  // namespace qvt
