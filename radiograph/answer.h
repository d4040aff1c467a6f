// What the decoder sends back: a read result as bytes. The reader of it trusts nothing, since the
// decoder may have been taken over by the file that it decoded.
#pragma once

#include <string>
#include <string_view>

#include "radiograph/radiograph.h"

namespace Radiography {

std::string ComposeAnswer(const ReadResult& result);

// A decoder that died while it answered gives a failure too. Whatever the bytes are, the radiograph
// keeps what radiograph.h promises.
ReadResult ParseAnswer(std::string_view bytes);

// No answer is longer, in bytes: the grey levels of the largest picture, tables and texts.
inline constexpr std::size_t kLongestAnswer = (std::size_t{1} << 30) + (std::size_t{1} << 24);

}  // namespace Radiography
