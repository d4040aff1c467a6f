// Texts before people: what is seen stays, what would do something is shown.
#include "batch/terminal_text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::string_literals;

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
    {"", "", "", ""},
};

TEST(TerminalText, HoldsNothingThatATerminalObeys) {
  for (const Shown& row : kTexts) {
    EXPECT_EQ(Cohort::ShownText(row.text), row.inMessage);
    EXPECT_EQ(Cohort::ShownCell(row.text), row.inCell);
    EXPECT_EQ(Cohort::ShownLines(row.text), row.inLines);
  }
}

}  // namespace
