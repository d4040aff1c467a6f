// Looks at texts one character at a time.
#include "columns/visible_text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Cohort {

namespace {

constexpr char32_t kNotUtf8 = 0xFFFFFFFF;

struct Character {
  char32_t code = 0;       // kNotUtf8 for a byte that is part of no character
  std::string_view bytes;  // as they stand in the text
};

unsigned char ByteAt(std::string_view text, std::size_t i) {
  return i < text.size() ? static_cast<unsigned char>(text[i]) : 0;
}

bool IsWithin(unsigned char byte, unsigned first, unsigned last) {
  return first <= byte && byte <= last;
}

// How many bytes the character takes that the text begins with; 0 where the first byte begins none.
std::size_t CharacterLength(std::string_view text) {
  const unsigned char first = ByteAt(text, 0);
  if (first < 0x80) return 1;
  if (!IsWithin(first, 0xC2, 0xF4)) return 0;
  const std::size_t length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  // No longer form than necessary, no half of a pair of UTF-16, nothing beyond Unicode.
  const unsigned low = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
  const unsigned high = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
  if (!IsWithin(ByteAt(text, 1), low, high)) return 0;
  for (std::size_t i = 2; i < length; ++i) {
    if (!IsWithin(ByteAt(text, i), 0x80, 0xBF)) return 0;
  }
  return length;
}

// The character at the beginning of a text that is not empty.
Character FirstCharacter(std::string_view text) {
  const std::size_t length = CharacterLength(text);
  if (length == 0) return {kNotUtf8, text.substr(0, 1)};
  const std::string_view bytes = text.substr(0, length);
  char32_t code = ByteAt(bytes, 0) & (length == 1 ? 0x7F : 0xFF >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) code = code << 6 | (ByteAt(bytes, i) & 0x3F);
  return {code, bytes};
}

// `take` is given each character.
template <class Take>
void ForEachCharacter(std::string_view text, const Take& take) {
  while (!text.empty()) {
    const Character character = FirstCharacter(text);
    text.remove_prefix(character.bytes.size());
    take(character);
  }
}

struct Range {
  char32_t first;
  char32_t last;
};

template <std::size_t Count>
bool IsIn(char32_t code, const std::array<Range, Count>& ranges) {
  return std::any_of(ranges.begin(), ranges.end(), [code](const Range& range) {
    return range.first <= code && code <= range.last;
  });
}

constexpr std::array<Range, 9> kBlanks = {{{0x09, 0x0D},
                                           {0x20, 0x20},
                                           {0x85, 0x85},
                                           {0xA0, 0xA0},
                                           {0x2000, 0x200A},
                                           {0x2028, 0x2029},
                                           {0x202F, 0x202F},
                                           {0x205F, 0x205F},
                                           {0x3000, 0x3000}}};

constexpr std::array<Range, 2> kControls = {{{0x00, 0x1F}, {0x7F, 0x9F}}};

constexpr std::array<Range, 13> kInvisible = {{{0x00, 0x1F},          // control characters
                                               {0x7F, 0x9F},          // the same
                                               {0xAD, 0xAD},          // soft hyphen
                                               {0x034F, 0x034F},      // grapheme joiner
                                               {0x061C, 0x061C},      // Arabic letter mark
                                               {0x180E, 0x180E},      // Mongolian vowel separator
                                               {0x200B, 0x200F},      // zero-width, direction marks
                                               {0x202A, 0x202E},      // direction embeddings
                                               {0x2060, 0x206F},      // word joiner, isolates
                                               {0xFE00, 0xFE0F},      // variation selectors
                                               {0xFEFF, 0xFEFF},      // byte order mark
                                               {0xFFF9, 0xFFFB},      // annotation marks
                                               {0xE0000, 0xE0FFF}}};  // tags and selectors

char LowerCase(char c) {
  return 'A' <= c && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
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

// `show` appends a control character in its own way.
template <class Show>
std::string Shown(std::string_view text, const Show& show) {
  std::string shown;
  shown.reserve(text.size());
  ForEachCharacter(text, [&](const Character& character) {
    if (character.code == kNotUtf8) {
      AppendEscaped(shown, character.bytes);
    } else if (IsIn(character.code, kControls)) {
      show(shown, character.bytes);
    } else {
      shown += character.bytes;
    }
  });
  return shown;
}

}  // namespace

std::string VisibleName(std::string_view text) {
  std::string name;
  ForEachCharacter(text, [&](const Character& character) {
    if (IsIn(character.code, kBlanks)) {
      name += ' ';
    } else if (!IsIn(character.code, kInvisible)) {
      name += character.bytes;
    }
  });
  name.erase(0, name.find_first_not_of(' '));
  name.resize(name.find_last_not_of(' ') + 1);
  return name;
}

std::string PlainName(std::string_view text) {
  std::string name = VisibleName(text);
  std::transform(name.begin(), name.end(), name.begin(), LowerCase);
  return name;
}

std::string Quoted(std::string_view text) {
  constexpr std::size_t kMostCharacters = 200;
  std::string quoted = "\"";
  std::size_t count = 0;
  ForEachCharacter(text.substr(0, 4 * kMostCharacters), [&](const Character& character) {
    if (count++ >= kMostCharacters) return;
    if (character.code == '\t') {
      quoted += "\\t";
    } else if (character.code == kNotUtf8 || IsIn(character.code, kControls)) {
      quoted += '?';
    } else {
      quoted += character.bytes;
    }
  });
  return quoted + (count > kMostCharacters ? "…\"" : "\"");
}

std::string ShownText(std::string_view text) {
  return Shown(text, AppendEscaped);
}

std::string ShownCell(std::string_view text) {
  return Shown(text, [](std::string& out, std::string_view) { out += ' '; });
}

std::string ShownLines(std::string_view text) {
  return Shown(text, [end = text.data() + text.size()](std::string& out, std::string_view control) {
    const char* next = control.data() + control.size();
    const bool endsLine = control == "\n" || (control == "\r" && next != end && *next == '\n');
    if (endsLine || control == "\t") {
      out += control;
    } else {
      AppendEscaped(out, control);
    }
  });
}

}  // namespace Cohort
