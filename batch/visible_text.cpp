// Looks at texts one character at a time.
#include "batch/visible_text.h"

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

// How many bytes the character takes that begins with this one; 1 also where none does.
std::size_t LengthOf(unsigned char first) {
  if (first >= 0xC2 && first <= 0xDF) return 2;
  if (first >= 0xE0 && first <= 0xEF) return 3;
  if (first >= 0xF0 && first <= 0xF4) return 4;
  return 1;
}

bool IsContinued(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// The character at the beginning of a text that is not empty.
Character FirstCharacter(std::string_view text) {
  const auto first = static_cast<unsigned char>(text.front());
  const std::size_t length = LengthOf(first);
  const std::string_view bytes = text.substr(0, length);
  if (length == 1) return {first < 0x80 ? first : kNotUtf8, bytes};
  const std::string_view rest = bytes.substr(1);
  if (bytes.size() < length || !std::all_of(rest.begin(), rest.end(), IsContinued)) {
    return {kNotUtf8, text.substr(0, 1)};
  }
  char32_t code = first & (0xFF >> (length + 1));
  for (const char c : rest) code = code << 6 | (static_cast<unsigned char>(c) & 0x3F);
  return {code, bytes};
}

template <class Take>
void ForEachCharacter(std::string_view text, Take take) {
  while (!text.empty()) {
    const Character character = FirstCharacter(text);
    take(character);
    text.remove_prefix(character.bytes.size());
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

}  // namespace Cohort
