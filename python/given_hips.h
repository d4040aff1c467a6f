// Many hips in columns of plain numbers, computed as the rows of a cohort are.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "columns/row_status.h"
#include "model/hip_model.h"

namespace Python {

using Units = std::array<Sila::Unit, Sila::kMeasurementCount>;

// Those of a cohort whose header names none.
Units FirstUnits();

// Whether hips may lack the whole column: a body weight that is not known, a measurement that came
// after version 1.0.
constexpr bool MayBeMissing(const Sila::MeasurementRow& row) {
  return row.kind() == Sila::Kind::Weight || row.later.has_value();
}

// One number a hip, `stride` bytes apart: 0 where all hips share one. Need not be aligned.
struct GivenColumn {
  const std::byte* first = nullptr;
  std::ptrdiff_t stride = 0;
  Sila::Unit unit = Sila::Unit::Centimetre;
};

// By Sila::Measurement. Without a column a body weight is not known, and a measurement that came
// after version 1.0 has its older value; all others must be there. A body weight of NaN is not
// known.
struct GivenHips {
  std::size_t count = 0;
  std::array<std::optional<GivenColumn>, Sila::kMeasurementCount> columns = {};
};

// What became of a hip: its place here is the number that Python sees.
enum class HipStatus : std::uint8_t {
  Ok,
  OutOfRange,
  NoPole,
  NoStress,
  Missing,
  NotANumber,
  TooLarge,
  AngleTooLarge,
  NotAboveZero
};
inline constexpr std::size_t kStatusCount = 9;

HipStatus StatusOf(Cohort::NumberFault fault);
HipStatus StatusOf(Sila::HipOutcome outcome);

// "ok", "refused: …" as in a cohort, or "error: …" without the name of the measurement.
std::string TextOf(HipStatus status);

// Room for `count` hips. What there is not is NaN: the stresses of a hip that the model refuses,
// everything of one with a measurement that cannot be used, pmax without a body weight.
struct ComputedHips {
  std::array<double*, Sila::kResultCount> results = {};  // by Sila::Result
  std::uint8_t* status = nullptr;
};

// Computes in up to `threads` threads, the calling one among them, which asks `goOn` many
// times a second. False when that said no; the hips are then computed in part.
bool ComputeHips(const GivenHips& given, const ComputedHips& computed, unsigned threads,
                 const std::function<bool()>& goOn);

// One hip as the model takes it; of use only when nothing is wrong with it.
Sila::HipInputs InputsOf(const GivenHips& given, std::size_t hip);

// Writes what the model gives for one hip; `state` as for Sila::ComputeHip.
HipStatus ComputeUsableHip(const Sila::HipInputs& inputs, Sila::HipState& state,
                           const ComputedHips& computed, std::size_t hip);

// Writes that there are no results of a hip.
void LeaveOut(const ComputedHips& computed, std::size_t hip);

// The number of a hip in a column.
double NumberAt(const GivenColumn& column, std::size_t hip);

// What is wrong with one hip, as the status of a cohort's row; empty when nothing is.
std::string FaultsOf(const GivenHips& given, std::size_t hip);

}  // namespace Python
