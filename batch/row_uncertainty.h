// How uncertain a row's results are: its own uncertainties and the defaults, carried through the
// model.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/uncertainty_defaults.h"
#include "columns/header.h"
#include "uncertainty/hip_uncertainty.h"

namespace Cohort {

// What was asked for.
struct UncertaintyOptions {
  std::optional<std::string> defaults;  // path of the table of defaults
  std::optional<std::string> budget;    // path of a table to write
  Uncertainty::Settings settings;
  std::uint64_t seed = 1;
};

// What a row gets beside its results. Empty fields where there is nothing.
struct RowSpread {
  // For each result its standard uncertainty and the ends of its interval.
  std::vector<std::optional<double>> fields;
  std::optional<std::size_t> trials, ok;
  // By Sila::Result, then by source: the measurements and the magnification.
  std::vector<std::vector<double>> budget;
  std::string remark;  // what stands behind "ok"; empty where every trial has an answer
};

class RowUncertainty {
 public:
  // Throws CohortError for a table of defaults that cannot be used.
  explicit RowUncertainty(const UncertaintyOptions& options);

  bool HasBudget() const { return settings_.budget; }

  // The names of what a row gets.
  const std::vector<std::string>& Names() const { return names_; }

  // The reading of a row with these fields and inputs. What is wrong with its uncertainties is
  // added to the complaints, by AddFault.
  Uncertainty::HipReading Read(std::span<const std::string_view> fields, const Columns& columns,
                               const Sila::HipInputs& inputs, std::string& complaints) const;

  // For a hip that the model computes. May be called from several threads.
  RowSpread Compute(const Uncertainty::HipReading& reading) const;

  // For any other row.
  static RowSpread Nothing();

 private:
  Uncertainty::Settings settings_;
  UncertaintyDefaults defaults_;
  Uncertainty::Points points_;
  std::vector<std::string> names_;
};

}  // namespace Cohort
