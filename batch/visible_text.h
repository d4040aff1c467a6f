// What a person sees of a text: names are compared by it, and messages quote it. Free of Qt.
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

}  // namespace Cohort
