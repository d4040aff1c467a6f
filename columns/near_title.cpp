// Names reduced to their letters and compared.
#include "columns/near_title.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "columns/column_title.h"
#include "columns/uncertainty_columns.h"
#include "columns/visible_text.h"

namespace Cohort {

namespace {

// Units that people write, known to the program or not.
constexpr std::array<std::string_view, 16> kUnitWords = {
    "°",   "deg", "degree", "degrees", "rad", "kg", "kgs",  "lb",
    "lbs", "g",   "m",      "cm",      "mm",  "in", "inch", "inches"};

struct OtherName {
  std::string_view letters;
  Sila::Measurement measurement;
};

constexpr std::array<OtherName, 18> kOtherNames = {
    {{"weight", Sila::Measurement::BodyWeight},
     {"mass", Sila::Measurement::BodyWeight},
     {"bodymass", Sila::Measurement::BodyWeight},
     {"bodywt", Sila::Measurement::BodyWeight},
     {"patientweight", Sila::Measurement::BodyWeight},
     {"weightofbody", Sila::Measurement::BodyWeight},
     {"bw", Sila::Measurement::BodyWeight},
     {"wb", Sila::Measurement::BodyWeight},
     {"wt", Sila::Measurement::BodyWeight},
     {"ce", Sila::Measurement::ThetaCE},
     {"cea", Sila::Measurement::ThetaCE},
     {"lcea", Sila::Measurement::ThetaCE},
     {"ceangle", Sila::Measurement::ThetaCE},
     {"centreedgeangle", Sila::Measurement::ThetaCE},
     {"centeredgeangle", Sila::Measurement::ThetaCE},
     {"radius", Sila::Measurement::HeadRadius},
     {"radiusofhead", Sila::Measurement::HeadRadius},
     {"femoralheadradius", Sila::Measurement::HeadRadius}}};

bool IsLetter(char c) {
  return ('a' <= c && c <= 'z') || ('0' <= c && c <= '9') || (static_cast<unsigned char>(c) & 0x80);
}

// "body_weight (kg)" is "body", "weight", "kg".
std::vector<std::string> WordsOf(std::string_view plain) {
  std::vector<std::string> words(1);
  for (const char c : plain) {
    if (IsLetter(c)) {
      words.back() += c;
    } else if (!words.back().empty()) {
      words.emplace_back();
    }
  }
  if (words.back().empty()) words.pop_back();
  return words;
}

bool IsUnit(std::string_view word) {
  return std::find(kUnitWords.begin(), kUnitWords.end(), word) != kUnitWords.end();
}

std::string Joined(const std::vector<std::string>& words) {
  return std::accumulate(words.begin(), words.end(), std::string());
}

std::vector<std::string> WordsWithoutUnit(const Title& title) {
  std::vector<std::string> words = WordsOf(title.name);
  // "[bodyWeight]": brackets that hold the name.
  if (words.empty() && title.unit) words = WordsOf(*title.unit);
  if (words.size() > 1 && IsUnit(words.back())) words.pop_back();
  return words;
}

std::string LettersOf(const Title& title) {
  return Joined(WordsWithoutUnit(title));
}

constexpr std::size_t kLongestKey = 15;  // letters
static_assert(std::all_of(Sila::kMeasurements.begin(), Sila::kMeasurements.end(),
                          [](const auto& row) { return row.key.size() <= kLongestKey; }));

// How many letters must be put in, left out or exchanged to make one of the other, a measurement's
// name.
std::size_t Distance(std::string_view letters, std::string_view name) {
  std::array<std::size_t, kLongestKey + 1> row{};
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < letters.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t k = 0; k < name.size(); ++k) {
      const std::size_t exchanged = diagonal + (letters[i] == name[k] ? 0 : 1);
      diagonal = row[k + 1];
      row[k + 1] = std::min({exchanged, row[k] + 1, diagonal + 1});
    }
  }
  return row[name.size()];
}

// Shorter names lie too close to each other: "xizm" and "zizm" are one letter apart.
std::size_t MostLettersOff(std::string_view name) {
  if (name.size() >= 10) return 2;
  return name.size() >= 5 ? 1 : 0;
}

bool HasSameLetters(std::string_view letters, std::string_view name) {
  return letters.starts_with(name) &&
         (letters.size() == name.size() || IsUnit(letters.substr(name.size())));
}

// What people call an uncertainty, the program's own "u" first.
constexpr std::array<std::string_view, 10> kUncertaintyWords = {
    "u", "unc", "uncertainty", "sd", "se", "std", "stdev", "sigma", "err", "error"};

// The words of a title without the one that calls it an uncertainty; empty where none does. A unit
// may be in its brackets, or the name itself: "u(lizm)".
std::vector<std::string> WordsOfUncertain(const Title& title) {
  std::vector<std::string> words = WordsWithoutUnit(title);
  const auto found = std::find_first_of(words.begin(), words.end(), kUncertaintyWords.begin(),
                                        kUncertaintyWords.end());
  if (found == words.end()) return {};
  words.erase(found);
  return words.empty() && title.unit ? WordsOf(*title.unit) : words;
}

constexpr std::array<std::string_view, 4> kOtherMagnifications = {"mag", "magnif", "enlargement",
                                                                  "magnificationfactor"};

bool IsOtherName(std::string_view letters, Sila::Measurement measurement) {
  return std::any_of(kOtherNames.begin(), kOtherNames.end(), [&](const OtherName& other) {
    return other.letters == letters && other.measurement == measurement;
  });
}

// "bodyHeight" is one letter off, and a thing of its own.
bool IsMisspelt(std::string_view letters, std::string_view name) {
  if (letters.find("height") != std::string_view::npos) return false;
  const std::size_t most = MostLettersOff(name);
  // The distance of names whose lengths differ by more is greater.
  return letters.size() <= name.size() + most && Distance(letters, name) <= most;
}

}  // namespace

std::optional<NearTitle> FindNearTitle(std::string_view text) {
  const std::string letters = LettersOf(ReadTitle(text));
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    const std::string name = ReadTitle(row.key).name;
    if (HasSameLetters(letters, name)) return NearTitle{row.id, true};
    if (IsOtherName(letters, row.id) || IsMisspelt(letters, name)) return NearTitle{row.id, false};
  }
  return std::nullopt;
}

namespace {

bool IsNearMagnification(std::string_view letters) {
  return HasSameLetters(letters, kMagnificationName) || IsMisspelt(letters, kMagnificationName) ||
         std::find(kOtherMagnifications.begin(), kOtherMagnifications.end(), letters) !=
             kOtherMagnifications.end();
}

// Whether the letters are the name's with a "u" behind them.
bool IsGlued(std::string_view letters, std::string_view name) {
  return letters.size() == name.size() + 1 && letters.starts_with(name) && letters.ends_with('u');
}

}  // namespace

std::optional<std::string> FindNearUncertainty(std::string_view text) {
  const Title title = ReadTitle(text);
  const std::string letters = LettersOf(title);
  const std::string stem = Joined(WordsOfUncertain(title));
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    const std::string name = PlainName(row.key);
    const bool isNear = HasSameLetters(stem, name) || IsOtherName(stem, row.id) ||
                        (!stem.empty() && IsMisspelt(stem, name));
    if (isNear || IsGlued(letters, name)) return UncertaintyName(row.key);
  }
  if (IsNearMagnification(stem) || IsGlued(letters, kMagnificationName)) {
    return UncertaintyName(kMagnificationName);
  }
  if (IsNearMagnification(letters)) return std::string(kMagnificationName);
  return std::nullopt;
}

}  // namespace Cohort
