// What the parts of the decoder share: the bytes that they read, and how they refuse them.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "radiograph/radiograph.h"

namespace Radiography {

using Bytes = std::span<const std::uint8_t>;

// Thrown by Refuse; whoever decodes a whole file turns it into a result.
struct Refusal {
  ReadFailure failure;
};
[[noreturn]] void Refuse(ReadTrouble trouble, const std::string& detail = {});

}  // namespace Radiography
