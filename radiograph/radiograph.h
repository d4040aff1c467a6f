// A radiograph as it was read: its grey levels, how they are to be shown, and what the file says of
// the patient and the scale. Texts are UTF-8; an empty one is not known.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "radiograph/scale.h"

namespace Radiography {

enum class PatientSex : std::uint8_t { Unknown, Male, Female, Other };

// How a window turns values into brightness; DICOM's VOI LUT Function.
enum class WindowShape : std::uint8_t { Linear, LinearExact, Sigmoid };

// A range of values that is spread over all brightnesses. Width above 0.
struct Window {
  double centre = 0.0;
  double width = 1.0;
  WindowShape shape = WindowShape::Linear;
  std::string name;

  bool operator==(const Window&) const = default;
};

// The brightness of each value from `first` on; values outside take the nearest end.
struct BrightnessTable {
  std::int32_t first = 0;
  std::uint8_t bits = 16;  // of an entry: 2^bits - 1 is the full brightness
  std::vector<std::uint16_t> entries;
  std::string name;

  bool operator==(const BrightnessTable&) const = default;
};

using Date = std::optional<std::chrono::year_month_day>;

struct Patient {
  std::string familyName;
  std::string givenName;
  Date birth;
  PatientSex sex = PatientSex::Unknown;

  bool operator==(const Patient&) const = default;
};

struct Radiograph {
  int width = 0;                      // pixels
  int height = 0;                     // pixels
  int bits = 0;                       // of a level, 1 to 16
  std::vector<std::uint16_t> levels;  // row by row from the top, from 0 to 2^bits - 1

  // The value of a level, which windows and the user see.
  double slope = 1.0;
  double intercept = 0.0;
  double ValueOf(std::size_t level) const { return slope * static_cast<double>(level) + intercept; }

  bool inverted = false;  // the highest brightness is shown black
  std::vector<Window> windows;
  std::vector<BrightnessTable> tables;

  Patient patient;
  Date studyDate;
  // Where the rows and the columns point: L, R, A, P, H, F or several of them.
  std::string rowDirection;
  std::string columnDirection;
  std::string sopInstanceUid;
  std::string sha256;  // of the file, 64 hexadecimal digits
  int frames = 1;      // in the file; the first was taken
  ScaleAttributes scale;
  std::vector<std::string> notes;  // what the user should know of the reading

  bool operator==(const Radiograph&) const = default;
};

// Why there is no radiograph.
enum class ReadTrouble : std::uint8_t {
  CannotOpen,
  NotAPicture,
  Colour,
  CutShort,
  UnknownSyntax,
  TooLarge,
  Contradiction,  // sizes or depths that do not agree
  Damaged,
  TooMuchMemory,
  TookTooLong,
  DecoderMissing,
  DecoderDied,
  Cancelled,
};

struct ReadFailure {
  ReadTrouble trouble = ReadTrouble::Damaged;
  std::string detail;  // the system's reason, the name of a syntax

  bool operator==(const ReadFailure&) const = default;
};

using ReadResult = std::variant<Radiograph, ReadFailure>;

// The message for the user, one sentence.
std::string FailureText(const ReadFailure& failure);

}  // namespace Radiography
