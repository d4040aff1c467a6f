// Each hip by itself: beside its trials the rest costs nothing.
#include "python/uncertain_hips.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "columns/uncertainty_columns.h"
#include "python/shared_work.h"

namespace Python {

namespace {

using Uncertainty::HipReading;
using Uncertainty::HipUncertainty;
using Uncertainty::ReadingError;

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

// Reads the uncertainties of one hip; what is wrong with them is added to the faults.
class SpreadReader {
 public:
  SpreadReader(const GivenUncertainties& given, std::size_t hip, std::string& faults)
      : given_(given), hip_(hip), faults_(faults) {}

  // The hip's own u in the held unit, or the default.
  ReadingError ErrorOf(const Sila::MeasurementRow& row, ReadingError byDefault) const {
    const std::optional<GivenUncertainty>& column = given_.u[Sila::IndexOf(row.id)];
    if (!column || std::isnan(NumberAt(column->numbers, hip_))) return byDefault;
    const std::string name = Cohort::UncertaintyName(row.key);
    if (!column->unitFits) {
      Cohort::AddFault(faults_, name, Cohort::kUnitDoesNotFit);
      return {};
    }
    const double u = Sila::ToHeld(row.kind(), column->numbers.unit, ReadU(name, column->numbers));
    return {u, byDefault.distribution};
  }

  std::optional<Uncertainty::Source> Magnification(ReadingError byDefault) const {
    Uncertainty::Source factor{1.0, byDefault.u, byDefault.distribution};
    if (given_.magnificationU && !std::isnan(NumberAt(*given_.magnificationU, hip_))) {
      factor.u = ReadU(Cohort::UncertaintyName(Cohort::kMagnificationName), *given_.magnificationU);
    }
    if (given_.magnification) {
      factor.value = NumberAt(*given_.magnification, hip_);
      AddFaultIfAny(Cohort::kMagnificationName, Cohort::FaultOfMagnification(factor.value));
    }
    if (!given_.magnification && factor.u == 0.0) return std::nullopt;
    return factor;
  }

 private:
  double ReadU(std::string_view name, const GivenColumn& column) const {
    const double u = NumberAt(column, hip_);
    AddFaultIfAny(name, Cohort::FaultOfUncertainty(u));
    return u;
  }

  void AddFaultIfAny(std::string_view name, std::string_view fault) const {
    if (!fault.empty()) Cohort::AddFault(faults_, name, fault);
  }

  const GivenUncertainties& given_;
  std::size_t hip_;
  std::string& faults_;
};

HipReading ReadHip(const UncertaintyTask& task, std::size_t hip, std::string& faults) {
  HipReading reading{.values = InputsOf(task.hips, hip)};
  const SpreadReader reader(task.uncertainties, hip, faults);
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    const std::size_t index = Sila::IndexOf(row.id);
    reading.errors[index] = reader.ErrorOf(row, task.defaults.errors[index]);
  }
  reading.magnification = reader.Magnification(task.defaults.magnification);
  return reading;
}

void LeaveOut(const ComputedUncertainties& computed, std::size_t hip) {
  for (double* const spreads : computed.spreads) spreads[hip] = kNone;
  if (computed.budget != nullptr) std::fill_n(computed.budget + hip * kParts, kParts, kNone);
  computed.trials[hip] = computed.ok[hip] = 0;
}

// A source that the hip does not have, the magnification, has no part.
void WriteParts(const std::vector<double>& parts, double* place) {
  if (parts.empty()) return;
  std::fill_n(place, Uncertainty::kReadingSources, 0.0);
  std::copy(parts.begin(), parts.end(), place);
}

void Write(const HipUncertainty& found, const ComputedUncertainties& computed, std::size_t hip) {
  for (std::size_t i = 0; i < found.results.size(); ++i) {
    if (!found.results[i]) continue;
    const Uncertainty::Spread& spread = found.results[i]->spread;
    const std::size_t first = i * kSpreadsPerResult;
    computed.spreads[first][hip] = spread.u.value_or(kNone);
    if (computed.budget != nullptr) {
      WriteParts(spread.budget, computed.budget + hip * kParts + i * Uncertainty::kReadingSources);
    }
    if (!spread.interval) continue;
    computed.spreads[first + 1][hip] = spread.interval->low;
    computed.spreads[first + 2][hip] = spread.interval->high;
  }
  computed.trials[hip] = static_cast<std::int64_t>(found.trials);
  computed.ok[hip] = static_cast<std::int64_t>(found.ok);
}

std::string RemarkOn(const HipUncertainty& found) {
  const bool hasIntervals = found.completeness != Uncertainty::Completeness::TooManyRefused;
  return Cohort::RemarkOn({found.trials, found.ok, hasIntervals, found.settled});
}

// Gives the status.
std::string ComputeHip(const UncertaintyTask& task, const ComputedUncertainties& computed,
                       Sila::HipState& state, std::size_t hip) {
  LeaveOut(computed.hips, hip);
  LeaveOut(computed, hip);
  std::string faults = FaultsOf(task.hips, hip);
  if (faults == Cohort::kNoMeasurements) return faults;
  const HipReading reading = ReadHip(task, hip, faults);
  if (!faults.empty()) return faults;
  const HipStatus status =
      ComputeUsableHip(Uncertainty::TrueInputs(reading), state, computed.hips, hip);
  if (status != HipStatus::Ok) return TextOf(status);
  const HipUncertainty found =
      Uncertainty::ComputeHipUncertainty(reading, task.points, task.settings);
  Write(found, computed, hip);
  const std::string remark = RemarkOn(found);
  return TextOf(status) + (remark.empty() ? "" : ": " + remark);
}

}  // namespace

bool ComputeUncertainHips(const UncertaintyTask& task, ComputedUncertainties& computed,
                          unsigned threads, const std::function<bool()>& goOn) {
  computed.status.resize(task.hips.count);
  const auto makeWorker = [&] {
    return [&, state = Sila::HipState()](std::size_t hip) mutable {
      computed.status[hip] = ComputeHip(task, computed, state, hip);
    };
  };
  return ShareWork({.pieces = task.hips.count, .threads = threads}, makeWorker, goOn);
}

}  // namespace Python
