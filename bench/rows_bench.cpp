// Rows per second through the whole cohort program on one thread, beside the hips per second of the
// model alone: the same hips, in turns, in one run. Ends with the ratio of the two.
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <vector>

#include "batch/cohort_run.h"
#include "model/hip_model.h"
#include "tests/support/random_hips.h"

namespace {

constexpr std::size_t kRows = 100'000;
constexpr int kTurns = 30;
constexpr char kFile[] = "rows_bench.csv";

// As a clinic writes them: lengths in cm and angles in degrees with one or two decimals.
struct WrittenColumn {
  Sila::Measurement id;
  Sila::Unit unit;
  int decimals;
};
constexpr std::array kColumns = {
    WrittenColumn{Sila::Measurement::Lizm, Sila::Unit::Centimetre, 2},
    WrittenColumn{Sila::Measurement::Xizm, Sila::Unit::Centimetre, 2},
    WrittenColumn{Sila::Measurement::Zizm, Sila::Unit::Centimetre, 2},
    WrittenColumn{Sila::Measurement::Cizm, Sila::Unit::Centimetre, 2},
    WrittenColumn{Sila::Measurement::Hizm, Sila::Unit::Centimetre, 2},
    WrittenColumn{Sila::Measurement::Zasuk, Sila::Unit::Degree, 1},
    WrittenColumn{Sila::Measurement::ThetaCE, Sila::Unit::Degree, 1},
    WrittenColumn{Sila::Measurement::HeadRadius, Sila::Unit::Metre, 4},
    WrittenColumn{Sila::Measurement::BodyWeight, Sila::Unit::Kilogram, 1}};

// Writes one field, and leaves in the hip what the field says.
void WriteField(std::string& out, const WrittenColumn& column, Sila::HipInputs& hip) {
  const Sila::MeasurementRow& row = Sila::RowOf(column.id);
  const double given = Sila::FromHeld(row.kind(), column.unit, Sila::ValueOf(hip, row));
  std::array<char, 32> digits{};
  char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), given,
                                  std::chars_format::fixed, column.decimals)
                        .ptr;
  double read = 0.0;
  std::from_chars(digits.data(), end, read);
  Sila::SetValue(hip, row, Sila::ToHeld(row.kind(), column.unit, read));
  out.append(digits.data(), end);
}

// A table of hips with a number before each; the hips as they are read from it.
std::vector<Sila::HipInputs> WriteTable() {
  RandomHips random(20261122);
  std::vector<Sila::HipInputs> hips(kRows);
  std::string text = "id";
  for (const WrittenColumn& column : kColumns) {
    text += ',';
    text += Sila::RowOf(column.id).key;
  }
  for (std::size_t i = 0; i < kRows; ++i) {
    hips[i] = random.Usual();
    text += '\n' + std::to_string(i);
    for (const WrittenColumn& column : kColumns) {
      text += ',';
      WriteField(text, column, hips[i]);
    }
  }
  std::ofstream(kFile) << text << '\n';
  return hips;
}

void ComputeRows() {
  Cohort::CohortSettings settings;
  settings.inputs = {kFile};
  settings.output = "/dev/null";
  const Cohort::CohortTally tally = Cohort::RunCohort(settings);
  if (tally.hips != kRows || tally.bad != 0) std::abort();
}

void ComputeHips(std::span<const Sila::HipInputs> hips) {
  Sila::HipState state;
  for (const Sila::HipInputs& hip : hips) {
    if (Sila::ComputeHip(hip, state) != Sila::HipOutcome::Ok) std::abort();
  }
}

template <class Work>
double NanosecondsEach(Work work) {
  const std::clock_t start = std::clock();
  work();
  const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
  return 1e9 * seconds / static_cast<double>(kRows);
}

}  // namespace

int main() {
  const std::vector<Sila::HipInputs> hips = WriteTable();
  double row = 1e9;
  double hip = 1e9;
  for (int turn = 0; turn < kTurns; ++turn) {
    row = std::min(row, NanosecondsEach(ComputeRows));
    hip = std::min(hip, NanosecondsEach([&] { ComputeHips(hips); }));
  }
  std::filesystem::remove(kFile);
  std::printf("rows: %4.0f ns each, %.2f million a second\n", row, 1e3 / row);
  std::printf("hips: %4.0f ns each, %.2f million a second\n", hip, 1e3 / hip);
  std::printf("rows come at %.2f of the hips' rate (best of %d turns)\n", hip / row, kTurns);
  return 0;
}
