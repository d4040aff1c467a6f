// Hips per second through the whole model on one core, beside the same model with the starting
// search walked step by step. Ends with the ratio of the two.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "model/contact_stress.h"
#include "model/hip_model.h"
#include "model/pole_search.h"
#include "tests/support/random_hips.h"

namespace {

constexpr char kShortCut[] = "ComputeHip";
constexpr char kLiteral[] = "LiteralSearch";
constexpr std::size_t kCases = 4096;  // enough that the processor cannot learn their branches

// Hips as a cohort holds them. Every one of them has an ordinary pole.
std::vector<Sila::HipInputs> MakeHips() {
  RandomHips random(20240229);
  std::vector<Sila::HipInputs> hips(kCases);
  for (Sila::HipInputs& hip : hips) hip = random.Usual();
  return hips;
}

double ComputePeak(const Sila::HipInputs& hip, Sila::HipState& state) {
  if (Sila::ComputeHip(hip, state) != Sila::HipOutcome::Ok) std::abort();
  return state.stress.pmax;
}

// The same hip with WalkToPole in the place of the short cut.
double ComputePeakLiterally(const Sila::HipInputs& hip, Sila::HipState& state) {
  Sila::ComputeHipForce(hip, state.force);
  if (!Sila::IsWithinModelRange(state.force.thetaR)) std::abort();
  Tlakm::ContactStress stress;
  Tlakm::LoadStressInputs({.headRadius = hip.headRadius,
                           .thetaCE = hip.thetaCE,
                           .bodyWeight = *hip.bodyWeight,
                           .rWb = state.force.rWb,
                           .thetaR = {state.force.thetaR}},
                          stress);
  if (Tlakm::ChooseForm(stress.angles) != Tlakm::PoleForm::Ordinary) std::abort();
  double pole = Tlakm::WalkToPole(stress.angles).estimate;
  for (;;) {
    const Tlakm::PoleEquation equation =
        Tlakm::EvaluatePoleEquation(stress.angles, Tlakm::PoleForm::Ordinary, pole);
    if (std::abs(equation.residual) < 1e-10) break;
    pole -= equation.residual / equation.slope;
  }
  const double p0 = Tlakm::poleStress(stress, pole);
  return pole <= hip.thetaCE ? p0 : p0 * std::cos(pole - hip.thetaCE);
}

template <double (*Compute)(const Sila::HipInputs&, Sila::HipState&)>
void Run(benchmark::State& state) {
  const std::vector<Sila::HipInputs> hips = MakeHips();
  Sila::HipState hipState;
  std::size_t next = 0;
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(Compute(hips[next], hipState));
    next = (next + 1) % kCases;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(Run<ComputePeak>)->Name(kShortCut);
BENCHMARK(Run<ComputePeakLiterally>)->Name(kLiteral);

// Remembers what the console shows.
class RateReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) nanoseconds_[run.run_name.str()] = run.GetAdjustedCPUTime();
    ConsoleReporter::ReportRuns(runs);
  }

  void PrintRatio() const {
    const auto fast = nanoseconds_.find(kShortCut);
    const auto literal = nanoseconds_.find(kLiteral);
    if (fast == nanoseconds_.end() || literal == nanoseconds_.end()) return;
    std::printf("%.2f million hips a second; %.1f times the rate of the literal search\n",
                1e3 / fast->second, literal->second / fast->second);
  }

 private:
  std::map<std::string, double> nanoseconds_;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  RateReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.PrintRatio();
  return 0;
}
