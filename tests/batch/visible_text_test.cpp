// What is left of a text that a person would not see, and how texts are quoted.
#include "batch/visible_text.h"

#include <gtest/gtest.h>

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

}  // namespace
