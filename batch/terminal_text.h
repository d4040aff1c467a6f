// Text from files and command lines as it may stand before people: nothing in it does anything to a
// terminal. Control characters, of 7 and of 8 bits, and bytes that are no UTF-8 are shown as \x1b.
#pragma once

#include <string>
#include <string_view>

namespace Cohort {

// On one line: in a message.
std::string ShownText(std::string_view text);

// The same, but a control character becomes a blank: in a table.
std::string ShownCell(std::string_view text);

// Line ends (LF, CR LF) and tabs stay: a table of rows on its way to a terminal.
std::string ShownLines(std::string_view text);

}  // namespace Cohort
