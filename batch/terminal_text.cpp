// UTF-8 is taken apart by its definition: a byte of 0x80 to 0x9F that is part of no character is a
// control character to some terminals, as are U+0080 to U+009F.
#include "batch/terminal_text.h"

#include <algorithm>
#include <cstddef>

namespace Cohort {

namespace {

unsigned char ByteAt(std::string_view text, std::size_t i) {
  return i < text.size() ? static_cast<unsigned char>(text[i]) : 0;
}

bool IsIn(unsigned char byte, unsigned first, unsigned last) {
  return first <= byte && byte <= last;
}

// How many bytes the character takes that the text begins with; 0 where the first byte begins none.
std::size_t CharacterLength(std::string_view text) {
  const unsigned char first = ByteAt(text, 0);
  if (first < 0x80) return 1;
  if (!IsIn(first, 0xC2, 0xF4)) return 0;
  const std::size_t length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  // No longer form than there must be, no half of a pair of UTF-16, nothing beyond Unicode.
  const unsigned low = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
  const unsigned high = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
  if (!IsIn(ByteAt(text, 1), low, high)) return 0;
  for (std::size_t i = 2; i < length; ++i) {
    if (!IsIn(ByteAt(text, i), 0x80, 0xBF)) return 0;
  }
  return length;
}

bool IsControl(std::string_view character) {
  const unsigned char first = ByteAt(character, 0);
  return first < 0x20 || first == 0x7F || (first == 0xC2 && ByteAt(character, 1) < 0xA0);
}

void AppendEscaped(std::string& out, std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    out += "\\x";
    out += kDigits[byte >> 4];
    out += kDigits[byte & 0xF];
  }
}

// `show` appends a control character, which begins the text that it is given and has the length
// that it is given, in its own way.
template <class Show>
std::string Shown(std::string_view text, const Show& show) {
  std::string shown;
  shown.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = CharacterLength(text);
    const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
    if (length == 0) {
      AppendEscaped(shown, character);
    } else if (IsControl(character)) {
      show(shown, text, length);
    } else {
      shown += character;
    }
    text.remove_prefix(character.size());
  }
  return shown;
}

}  // namespace

std::string ShownText(std::string_view text) {
  return Shown(text, [](std::string& out, std::string_view rest, std::size_t length) {
    AppendEscaped(out, rest.substr(0, length));
  });
}

std::string ShownCell(std::string_view text) {
  return Shown(text, [](std::string& out, std::string_view, std::size_t) { out += ' '; });
}

std::string ShownLines(std::string_view text) {
  return Shown(text, [](std::string& out, std::string_view rest, std::size_t length) {
    const bool stays = rest.front() == '\n' || rest.front() == '\t' || rest.starts_with("\r\n");
    if (stays) {
      out += rest.front();
    } else {
      AppendEscaped(out, rest.substr(0, length));
    }
  });
}

}  // namespace Cohort
