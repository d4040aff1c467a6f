// What a person sees of a text from a file or a command line: names are compared by it, messages
// quote it, and nothing in it does anything to a terminal.
#pragma once

#include <string>
#include <string_view>

namespace Cohort {

// The text without what cannot be seen (byte order marks, zero-width and bidirectional marks, soft
// hyphens, control characters), with every kind of blank as a plain one and none around it.
std::string VisibleName(std::string_view text);

// The same with ASCII letters in lower case.
std::string PlainName(std::string_view text);

// The text in quotes for a message: on one line, without control characters, shortened when it is
// long. What is not UTF-8 is shown as question marks.
std::string Quoted(std::string_view text);

// The whole text on one line, in a message. Control characters, of 7 and of 8 bits, and bytes that
// are not UTF-8 are shown as \x1b.
std::string ShownText(std::string_view text);

// The same, but a control character becomes a blank: in a table.
std::string ShownCell(std::string_view text);

// The same as ShownText, but line ends (LF, CR LF) and tabs stay: rows on their way to a terminal.
std::string ShownLines(std::string_view text);

}  // namespace Cohort
