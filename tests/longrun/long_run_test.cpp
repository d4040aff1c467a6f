// The program at work for a long time: memory, handles, objects and the time that a round takes
// must not grow. The environment says how many rounds: TELMARION_ROUNDS.
#include <gtest/gtest.h>

#include <QDir>
#include <algorithm>
#include <iostream>

#include "tests/longrun/measure.h"
#include "tests/longrun/round.h"
#include "tests/support/marking_hand.h"

namespace {

constexpr int kSamples = 20;
constexpr int kFewRounds = 100;
constexpr int kRadiographs = 100;

int Rounds() {
  const int asked = qEnvironmentVariableIntValue("TELMARION_ROUNDS");
  return std::max(kSamples, asked > 0 ? asked : kFewRounds);
}

void ExpectNoGrowth(const std::vector<Sample>& samples) {
  // Between the two quarters lie half of the rounds. In few of them the processor's moods weigh
  // more than what the program does.
  const double slower = samples.back().rounds < 5000 ? 1.0 : 0.5;
  // A sanitizer brings a heap of its own, which the C library knows nothing of. It holds back what
  // is freed, and looks for what is lost itself.
  if (samples.back().heapKiB > 0.0) {
    EXPECT_EQ(FindGrowth(samples, &Sample::residentKiB, "resident memory", {4096.0, 0.0}), "");
    EXPECT_EQ(FindGrowth(samples, &Sample::heapKiB, "the heap", {256.0, 0.0}), "");
  }
  EXPECT_EQ(FindGrowth(samples, &Sample::handles, "the number of open files", {}), "");
  EXPECT_EQ(FindGrowth(samples, &Sample::threads, "the number of threads", {}), "");
  EXPECT_EQ(FindGrowth(samples, &Sample::processes, "the number of processes", {}), "");
  EXPECT_EQ(FindGrowth(samples, &Sample::widgets, "the number of widgets", {}), "");
  EXPECT_EQ(FindGrowth(samples, &Sample::objects, "the number of objects", {}), "");
  EXPECT_EQ(FindGrowth(samples, &Sample::processorMs, "the time of a round", {1.0, slower}), "");
}

TEST(LongRun, NothingGrows) {
  const QString before = QDir::currentPath();
  RunningProgram program(QLocale::c(), {TELMARION_HELP_DIR}, {}, {}, TELMARION_DECODE);
  const QString radiograph = program.Path("phantom.dcm");
  ASSERT_TRUE(WritePhantomDicom(radiograph.toStdString(), FileOf(SmallPhantom())));
  ASSERT_TRUE(QDir::setCurrent(program.folder.path()));  // TEST.BMP goes there
  const int inStretch = Rounds() / kSamples;
  const int betweenRadiographs = std::max(1, Rounds() / kRadiographs);
  std::vector<Sample> samples;
  std::cout << TableHead();
  for (int done = 0; samples.size() < kSamples && !testing::Test::HasFailure();) {
    const Stretch stretch;
    for (int i = 0; i < inStretch; ++i, ++done) {
      WorkOneRound(program, done);
      if (done % betweenRadiographs == 0) MarkARadiograph(program, radiograph);
    }
    samples.push_back(stretch.Measure(inStretch, done));
    std::cout << TableLine(samples.back()) << std::flush;
  }
  QDir::setCurrent(before);
  ASSERT_EQ(samples.size(), kSamples);
  ExpectNoGrowth(samples);
}

std::vector<Sample> HeapThatGrows(double perSample) {
  std::vector<Sample> samples(kSamples);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    samples[i].heapKiB = 1000.0 + perSample * static_cast<double>(i);
  }
  samples[17].heapKiB = 9000.0;  // an outlier
  return samples;
}

TEST(LongRun, GrowthIsFoundAndNoiseIsNot) {
  const Allowance allowed = {256.0, 0.0};
  EXPECT_EQ(FindGrowth(HeapThatGrows(0.0), &Sample::heapKiB, "the heap", allowed), "");
  EXPECT_EQ(FindGrowth(HeapThatGrows(20.0), &Sample::heapKiB, "the heap", allowed), "");
  EXPECT_NE(FindGrowth(HeapThatGrows(30.0), &Sample::heapKiB, "the heap", allowed), "");
}

}  // namespace
