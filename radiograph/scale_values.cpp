#include "radiograph/scale_values.h"

#include <algorithm>
#include <cmath>

namespace Radiography {

namespace {

const char* Trouble(double value) {
  if (std::isnan(value)) return "is not a number";
  if (std::isinf(value)) return "is infinite";
  if (value == 0.0) return "is zero";
  if (value < 0.0) return "is negative";
  return nullptr;
}

const char* CountTrouble(std::size_t count, std::size_t wanted) {
  if (count == wanted) return nullptr;
  if (wanted == 2) return count == 1 ? "is a single value, not two" : "has more than two values";
  return "has more than one value";
}

// What is wrong with the values, or null.
const char* Trouble(const std::vector<double>& values, std::size_t wanted) {
  if (const char* trouble = CountTrouble(values.size(), wanted)) return trouble;
  for (const double value : values) {
    if (const char* trouble = Trouble(value)) return trouble;
  }
  return nullptr;
}

bool AreUsable(const char* name, const std::vector<double>& values, std::size_t wanted,
               ScaleNotes& notes) {
  if (values.empty()) return false;
  const char* trouble = Trouble(values, wanted);
  if (trouble == nullptr) return true;
  notes.push_back(std::string(name) + " " + trouble + " and is not used");
  return false;
}

}  // namespace

std::optional<PixelSpacing> UsableSpacing(const char* name, const std::vector<double>& values,
                                          ScaleNotes& notes) {
  if (!AreUsable(name, values, 2, notes)) return {};
  return PixelSpacing{values[0], values[1]};
}

std::optional<double> UsableDistance(const char* name, const std::vector<double>& values,
                                     ScaleNotes& notes) {
  if (!AreUsable(name, values, 1, notes)) return {};
  return values[0];
}

std::optional<double> UsableFactor(const char* name, const std::vector<double>& values,
                                   ScaleNotes& notes) {
  if (!AreUsable(name, values, 1, notes)) return {};
  if (values[0] >= 1.0) return values[0];
  notes.push_back(std::string(name) + " is below 1 and is not used");
  return {};
}

std::optional<double> UsableRatio(const char* name, const std::vector<double>& values,
                                  ScaleNotes& notes) {
  if (!AreUsable(name, values, 2, notes)) return {};
  return values[0] / values[1];
}

}  // namespace Radiography
