// What a person sees of a text, and what is shown where something would be obeyed.
#include "columns/visible_text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::string_literals;

TEST(VisibleName, LeavesOutWhatCannotBeSeen) {
  for (const char* mark : {"\uFEFF", "\u200B", "\u200C", "\u200D", "\u200E", "\u200F",    "\u202A",
                           "\u202E", "\u2060", "\u2066", "\u2069", "\u00AD", "\u061C",    "\u034F",
                           "\u180E", "\uFE0F", "\u0001", "\x7F",   "\u0080", "\U000E0041"}) {
    for (const std::string& text : {mark + "Lizm"s, "Li"s + mark + "zm", "Lizm"s + mark}) {
      EXPECT_EQ(Cohort::VisibleName(text), "Lizm") << testing::PrintToString(text);
    }
  }
}

TEST(VisibleName, HasNoBlanksAroundItAndPlainOnesWithin) {
  for (const char* blank : {" ", "\t", "\r\n", "\u00A0", "\u2003", "\u202F", "\u3000", "\u0085"}) {
    EXPECT_EQ(Cohort::VisibleName(blank + "Lizm"s + blank), "Lizm");
    EXPECT_EQ(Cohort::VisibleName("a"s + blank + "b").front(), 'a');
    EXPECT_EQ(Cohort::VisibleName("a"s + blank + "b").find_first_not_of("a b"), std::string::npos);
  }
  EXPECT_EQ(Cohort::VisibleName(" \u00A0 "), "");
  EXPECT_EQ(Cohort::VisibleName(""), "");
}

TEST(VisibleName, KeepsEverythingElse) {
  for (const char* text : {"\u00DCber", "\u4F53\u91CD", "\U0001F9B4", "5' 10\"", "\xFF", "\xC3",
                           "\xE2\x80", "a\xE2(b", "\xF0\x9F\xA6"}) {
    EXPECT_EQ(Cohort::VisibleName(text), text);
  }
}

TEST(PlainName, IsInLowerCase) {
  EXPECT_EQ(Cohort::PlainName(" \uFEFFThetaCE\u00A0[DEG] "), "thetace [deg]");
  EXPECT_EQ(Cohort::PlainName("\u00DCBER"), "\u00DCber");
}

TEST(Quoted, StandsOnOneLineWithoutControlCharacters) {
  EXPECT_EQ(Cohort::Quoted("lizm,\u00FCber"), "\"lizm,\u00FCber\"");
  EXPECT_EQ(Cohort::Quoted("a\tb\x1B[31m\r\n\u009B\x7F"), "\"a\\tb?[31m????\"");
  EXPECT_EQ(Cohort::Quoted("\x9B\xFF\xC3"), "\"???\"");
}

TEST(Quoted, IsShortenedBetweenCharacters) {
  std::string most;
  for (int i = 0; i < 200; ++i) most += "\u00FC";
  EXPECT_EQ(Cohort::Quoted(most), "\"" + most + "\"");
  EXPECT_EQ(Cohort::Quoted(most + "x"), "\"" + most + "\u2026\"");
}

struct Shown {
  std::string text;
  std::string inMessage;
  std::string inCell;
  std::string inLines;
};

const Shown kTexts[] = {
    {"Žofie 漢字 😀", "Žofie 漢字 😀", "Žofie 漢字 😀", "Žofie 漢字 😀"},
    {"a\tb\nc\r\nd\re", "a\\x09b\\x0ac\\x0d\\x0ad\\x0de", "a b c  d e", "a\tb\nc\r\nd\\x0de"},
    {"\x1b[2J\x7f", "\\x1b[2J\\x7f", " [2J ", "\\x1b[2J\\x7f"},
    {"a\0b"s, "a\\x00b", "a b", "a\\x00b"},
    // U+0080, U+009F and the first character behind them
    {"\xC2\x80\xC2\x9F\xC2\xA0", "\\xc2\\x80\\xc2\\x9f\xC2\xA0", "  \xC2\xA0",
     "\\xc2\\x80\\xc2\\x9f\xC2\xA0"},
    // Latin-1; the second byte is a control character of 8 bits.
    {"M\xFC\x9B", "M\\xfc\\x9b", "M\\xfc\\x9b", "M\\xfc\\x9b"},
    // Too long a form of a blank, half of a pair, beyond Unicode, cut off.
    {"\xC0\xA0", "\\xc0\\xa0", "\\xc0\\xa0", "\\xc0\\xa0"},
    {"\xE0\x82\x9B", "\\xe0\\x82\\x9b", "\\xe0\\x82\\x9b", "\\xe0\\x82\\x9b"},
    {"\xED\xA0\x80", "\\xed\\xa0\\x80", "\\xed\\xa0\\x80", "\\xed\\xa0\\x80"},
    {"\xF4\x90\x80\x80", "\\xf4\\x90\\x80\\x80", "\\xf4\\x90\\x80\\x80", "\\xf4\\x90\\x80\\x80"},
    {"\xF0\x82\x9B\x80", "\\xf0\\x82\\x9b\\x80", "\\xf0\\x82\\x9b\\x80", "\\xf0\\x82\\x9b\\x80"},
    {"\xE6\xBC", "\\xe6\\xbc", "\\xe6\\xbc", "\\xe6\\xbc"},
    {"\r", "\\x0d", " ", "\\x0d"},
    {"", "", "", ""},
};

TEST(ShownTexts, HoldNothingThatATerminalObeys) {
  for (const Shown& row : kTexts) {
    EXPECT_EQ(Cohort::ShownText(row.text), row.inMessage);
    EXPECT_EQ(Cohort::ShownCell(row.text), row.inCell);
    EXPECT_EQ(Cohort::ShownLines(row.text), row.inLines);
  }
}

}  // namespace
