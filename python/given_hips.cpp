// Hips are read column by column into a block that fits the processor's nearest cache.
#include "python/given_hips.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <utility>
#include <variant>

#include "python/shared_work.h"

namespace Python {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr double kJustAboveZero = std::numeric_limits<double>::denorm_min();
constexpr std::size_t kBlock = 64;                // hips
constexpr std::size_t kBlocksBetweenAsks = 1024;  // some hundredths of a second

std::optional<Cohort::NumberFault> FaultIn(const Sila::MeasurementRow& row,
                                           const GivenColumn& column, std::size_t hip) {
  const double given = NumberAt(column, hip);
  if (row.kind() == Sila::Kind::Weight && std::isnan(given)) return std::nullopt;
  return Cohort::FaultOf(row.kind(), column.unit, given);
}

template <class Unit>
void Hold(Sila::Quantity<Unit>& quantity, double held) {
  quantity = {held};
}
void Hold(std::optional<Sila::Kilograms>& weight, double held) {
  weight = Sila::Kilograms{held};
}

// Hips [first, first + count) as the model takes them. A hip with a fault has its status here.
struct Block {
  std::array<Sila::HipInputs, kBlock> inputs = {};
  std::array<HipStatus, kBlock> status = {};
};

class BlockReader {
 public:
  BlockReader(const GivenHips& given, std::size_t first, std::size_t count, Block& block)
      : given_(given), first_(first), count_(count), block_(block) {}

  void Read() {
    block_.status.fill(HipStatus::Ok);
    for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
      const std::optional<GivenColumn>& column = given_.columns[Sila::IndexOf(row.id)];
      if (column) {
        ReadColumn(row, *column);
      } else {
        Leave(row);
      }
    }
  }

 private:
  void ReadColumn(const Sila::MeasurementRow& row, const GivenColumn& column) {
    const Sila::Kind kind = row.kind();
    const bool isHeld = Sila::ToHeld(kind, column.unit, 1.0) == 1.0;  // most are
    const bool plain = isHeld ? HoldColumn(row, column, [](double given) { return given; })
                              : HoldColumn(row, column, [&](double given) {
                                  return Sila::ToHeld(kind, column.unit, given);
                                });
    if (plain) return;
    for (std::size_t i = 0; i < count_; ++i) NoteFault(row, column, i);
  }

  // False when a number looks wrong. Only a block with such a one is looked at closely.
  template <class ToHeld>
  bool HoldColumn(const Sila::MeasurementRow& row, const GivenColumn& column, ToHeld toHeld) {
    const double limit =
        column.unit == Sila::Unit::Radian ? Sila::kLargestRadians : Sila::kLargestNumber;
    const double low = Cohort::MustBeAboveZero(row.kind()) ? kJustAboveZero : -limit;
    return std::visit(
        [&](auto member) {
          bool plain = true;
          for (std::size_t i = 0; i < count_; ++i) {
            const double given = NumberAt(column, first_ + i);
            Hold(block_.inputs[i].*member, toHeld(given));
            plain &= given >= low && given <= limit;
          }
          return plain;
        },
        row.member);
  }

  void NoteFault(const Sila::MeasurementRow& row, const GivenColumn& column, std::size_t i) {
    const bool isWeight = row.kind() == Sila::Kind::Weight;
    if (isWeight && std::isnan(NumberAt(column, first_ + i))) {
      block_.inputs[i].bodyWeight.reset();
    } else if (const auto fault = FaultIn(row, column, first_ + i)) {
      if (block_.status[i] == HipStatus::Ok) block_.status[i] = StatusOf(*fault);
    }
  }

  void Leave(const Sila::MeasurementRow& row) {
    for (std::size_t i = 0; i < count_; ++i) {
      if (row.later) {
        Sila::SetValue(block_.inputs[i], row, row.later->without);
      } else if (row.kind() == Sila::Kind::Weight) {
        block_.inputs[i].bodyWeight.reset();
      }
    }
  }

  const GivenHips& given_;
  std::size_t first_;
  std::size_t count_;
  Block& block_;
};

// What one thread needs.
struct Room {
  Block block;
  Sila::HipState state;
};

void ComputeBlock(const GivenHips& given, const ComputedHips& computed, std::size_t first,
                  Room& room) {
  const std::size_t count = std::min(kBlock, given.count - first);
  BlockReader(given, first, count, room.block).Read();
  for (std::size_t i = 0; i < count; ++i) {
    const HipStatus found = room.block.status[i];
    if (found == HipStatus::Ok) {
      const Sila::HipInputs& inputs = room.block.inputs[i];
      const HipStatus status = ComputeUsableHip(inputs, room.state, computed, first + i);
      computed.status[first + i] = static_cast<std::uint8_t>(status);
    } else {
      LeaveOut(computed, first + i);
      computed.status[first + i] = static_cast<std::uint8_t>(found);
    }
  }
}

// By a row that the compiler knows: a loop would call a function for every result of a hip.
template <std::size_t result>
void WriteResult(const Sila::HipInputs& inputs, const Sila::HipResults& results, bool isOk,
                 double* place) {
  constexpr Sila::ResultRow row = Sila::kResults[result];
  const bool known = (isOk || !row.isStress) && (inputs.bodyWeight || !row.needsWeight);
  const double value = row.value(results);
  *place = known && std::isfinite(value) ? value : kNone;
}

}  // namespace

HipStatus StatusOf(Cohort::NumberFault fault) {
  switch (fault) {
    case Cohort::NumberFault::Missing:
      return HipStatus::Missing;
    case Cohort::NumberFault::TooLarge:
      return HipStatus::TooLarge;
    case Cohort::NumberFault::AngleTooLarge:
      return HipStatus::AngleTooLarge;
    case Cohort::NumberFault::NotAboveZero:
      return HipStatus::NotAboveZero;
    case Cohort::NumberFault::NotANumber:
      break;
  }
  return HipStatus::NotANumber;
}

HipStatus StatusOf(Sila::HipOutcome outcome) {
  switch (outcome) {
    case Sila::HipOutcome::OutOfRange:
      return HipStatus::OutOfRange;
    case Sila::HipOutcome::NoPole:
      return HipStatus::NoPole;
    case Sila::HipOutcome::DivisionByZero:
      return HipStatus::NoStress;
    case Sila::HipOutcome::Ok:
      break;
  }
  return HipStatus::Ok;
}

Units FirstUnits() {
  Units units{};
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    units[Sila::IndexOf(row.id)] = Sila::UnitsOf(row.kind()).front();
  }
  return units;
}

std::string TextOf(HipStatus status) {
  const auto error = [](const char* what, Cohort::NumberFault fault) {
    return std::string("error: ") + what + ' ' + std::string(Cohort::Describe(fault));
  };
  constexpr const char* kAny = "a measurement";
  switch (status) {
    case HipStatus::OutOfRange:
      return std::string(Cohort::StatusOf(Sila::HipOutcome::OutOfRange));
    case HipStatus::NoPole:
      return std::string(Cohort::StatusOf(Sila::HipOutcome::NoPole));
    case HipStatus::NoStress:
      return std::string(Cohort::StatusOf(Sila::HipOutcome::DivisionByZero));
    case HipStatus::Missing:
      return error(kAny, Cohort::NumberFault::Missing);
    case HipStatus::NotANumber:
      return error(kAny, Cohort::NumberFault::NotANumber);
    case HipStatus::TooLarge:
      return error(kAny, Cohort::NumberFault::TooLarge);
    case HipStatus::AngleTooLarge:
      return error("an angle", Cohort::NumberFault::AngleTooLarge);
    case HipStatus::NotAboveZero:
      return error("a radius or weight", Cohort::NumberFault::NotAboveZero);
    case HipStatus::Ok:
      break;
  }
  return std::string(Cohort::StatusOf(Sila::HipOutcome::Ok));
}

HipStatus ComputeUsableHip(const Sila::HipInputs& inputs, Sila::HipState& state,
                           const ComputedHips& computed, std::size_t hip) {
  const HipStatus status = StatusOf(Sila::ComputeHip(inputs, state));
  const bool isOk = status == HipStatus::Ok;
  const auto write = [&]<std::size_t... i>(std::index_sequence<i...>) {
    (WriteResult<i>(inputs, state.results, isOk, computed.results[i] + hip), ...);
  };
  write(std::make_index_sequence<Sila::kResultCount>());
  return status;
}

void LeaveOut(const ComputedHips& computed, std::size_t hip) {
  for (double* const results : computed.results) results[hip] = kNone;
}

bool ComputeHips(const GivenHips& given, const ComputedHips& computed, unsigned threads,
                 const std::function<bool()>& goOn) {
  const auto makeWorker = [&] {
    return [&, room = std::make_shared<Room>()](std::size_t block) {
      ComputeBlock(given, computed, kBlock * block, *room);
    };
  };
  const std::size_t blocks = (given.count + kBlock - 1) / kBlock;
  return ShareWork({blocks, threads, kBlocksBetweenAsks}, makeWorker, goOn);
}

Sila::HipInputs InputsOf(const GivenHips& given, std::size_t hip) {
  Block block;
  BlockReader(given, hip, 1, block).Read();
  return block.inputs[0];
}

double NumberAt(const GivenColumn& column, std::size_t hip) {
  double number = 0.0;
  std::memcpy(&number, column.first + static_cast<std::ptrdiff_t>(hip) * column.stride,
              sizeof number);
  return number;
}

std::string FaultsOf(const GivenHips& given, std::size_t hip) {
  std::string faults;
  bool holdsSomething = false;
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    const std::optional<GivenColumn>& column = given.columns[Sila::IndexOf(row.id)];
    if (!column) continue;
    const bool isWeight = row.kind() == Sila::Kind::Weight;
    holdsSomething = holdsSomething || (!isWeight && !std::isnan(NumberAt(*column, hip)));
    if (const auto fault = FaultIn(row, *column, hip)) Cohort::AddFault(faults, row, *fault);
  }
  return holdsSomething ? faults : std::string(Cohort::kNoMeasurements);
}

}  // namespace Python
