// A radiograph of 3000 x 3000 pixels: from the call to the picture that can be shown, and a change
// of window.
#include <benchmark/benchmark.h>

#include <QTemporaryDir>
#include <cstdlib>

#include "radiograph/reader.h"
#include "radiograph/windowing.h"
#include "tests/support/phantom_dicom.h"

using namespace Radiography;

namespace {

constexpr int kSide = 3000;

PhantomDicom MakePhantom() {
  PhantomDicom phantom;
  phantom.rows = kSide;
  phantom.columns = kSide;
  unsigned grain = 1;
  for (int i = 0; i < kSide * kSide; ++i) {
    grain = grain * 1664525U + 1013904223U;
    phantom.pixels.push_back(static_cast<std::uint16_t>(1000 + i / kSide / 2 + i % kSide / 4 +
                                                        static_cast<int>(grain >> 27)));
  }
  return phantom;
}

// Opens the phantom as `tool` packs it.
void Open(benchmark::State& state, const char* tool) {
  const QTemporaryDir folder;
  const std::string plain = folder.filePath("plain.dcm").toStdString();
  const std::string packed = folder.filePath("packed.dcm").toStdString();
  const std::string command = std::string(tool) + " " + plain + " " + packed;
  if (!WritePhantomDicom(plain, MakePhantom()) || std::system(command.c_str()) != 0) {
    state.SkipWithError("no phantom");
    return;
  }
  for (auto _ : state) {
    const ReadResult result = ReadRadiograph(packed, {TELMARION_DECODE, {}});
    const auto* radiograph = std::get_if<Radiograph>(&result);
    if (radiograph == nullptr) {
      state.SkipWithError(FailureText(std::get<ReadFailure>(result)).c_str());
      return;
    }
    QImage image;
    PaintLevels(*radiograph, ComputeBrightness(*radiograph, FullWindow(*radiograph)), image);
    benchmark::DoNotOptimize(image.constBits());
  }
}

void ChangeWindow(benchmark::State& state) {
  Radiograph radiograph;
  radiograph.width = kSide;
  radiograph.height = kSide;
  radiograph.bits = static_cast<int>(state.range(0));
  radiograph.levels = MakePhantom().pixels;
  for (auto& level : radiograph.levels)
    level = static_cast<std::uint16_t>(level << (radiograph.bits - 12));
  QImage image;
  double centre = 1000.0;
  for (auto _ : state) {
    const Window window{centre += 10.0, 2000.0, WindowShape::Linear, {}};
    PaintLevels(radiograph, ComputeBrightness(radiograph, window), image);
    benchmark::DoNotOptimize(image.constBits());
  }
}

BENCHMARK(ChangeWindow)->Arg(12)->Arg(16)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Open, Plain, "cp")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Open, RunLength, "dcmcrle")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Open, JpegLossless, "dcmcjpeg +e1")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Open, JpegLs, "dcmcjpls")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Open, Jpeg2000, "gdcmconv --j2k")->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
