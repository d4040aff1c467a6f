// Names that end in "_u", and the names made from them.
#include "columns/uncertainty_columns.h"

#include <algorithm>
#include <charconv>

#include "columns/visible_text.h"

namespace Cohort {

namespace {

constexpr std::string_view kEnding = "_u";

// 0.95 is "95" and 0.975 "97.5": in as many digits as are needed, but without the noise of the
// product.
std::string PercentText(double probability) {
  constexpr int kDigits = 12;
  std::array<char, 32> text{};
  const auto written = std::to_chars(text.data(), text.data() + text.size(), 100.0 * probability,
                                     std::chars_format::general, kDigits);
  return {text.data(), written.ptr};
}

}  // namespace

bool UncertaintyColumns::Any() const {
  return magnification || magnificationU ||
         std::any_of(u.begin(), u.end(), [](const auto& column) { return column.has_value(); });
}

bool UncertaintyColumns::Holds(std::size_t field) const {
  return magnification == field || magnificationU == field ||
         std::any_of(u.begin(), u.end(),
                     [&](const auto& column) { return column && column->field == field; });
}

std::optional<UncertaintyTitle> UncertaintyNamed(const Title& title) {
  if (title.name == kMagnificationName) return UncertaintyTitle{std::nullopt, true};
  if (!title.name.ends_with(kEnding)) return std::nullopt;
  const std::string stem = title.name.substr(0, title.name.size() - kEnding.size());
  if (stem == kMagnificationName) return UncertaintyTitle{};
  const std::optional<Sila::Measurement> measurement = MeasurementNamed({stem, std::nullopt});
  if (!measurement) return std::nullopt;
  return UncertaintyTitle{measurement};
}

std::string UncertaintyName(std::string_view key) {
  return std::string(key) + std::string(kEnding);
}

std::vector<std::string> AddedUncertaintyNames(double coverage) {
  const std::string percent = PercentText(coverage);
  std::vector<std::string> names;
  for (const Sila::ResultRow& result : Sila::kResults) {
    names.push_back(UncertaintyName(result.key));
    for (const char* ending : {"_lo", "_hi"}) {
      names.emplace_back(result.key).append(ending).append(percent);
    }
  }
  names.insert(names.end(), {"mc_trials", "mc_ok"});
  return names;
}

}  // namespace Cohort
