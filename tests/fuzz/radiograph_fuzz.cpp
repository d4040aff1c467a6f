// Any bytes as a picture file, all the way to brightnesses: refused by name, or a radiograph that
// comes through the decoder's answer as it was and can be shown.
#include <cstddef>
#include <cstdint>

#include "radiograph/answer.h"
#include "radiograph/decoding/decode.h"
#include "radiograph/windowing.h"
#include "tests/fuzz/require.h"

using namespace Radiography;

namespace {

// Small pictures hold every fault that large ones do.
constexpr PictureLimits kSmall{256, 1 << 20};

void Show(const Radiograph& radiograph) {
  QImage image;
  for (const Window& window : radiograph.windows) {
    PaintLevels(radiograph, ComputeBrightness(radiograph, window), image);
  }
  for (const BrightnessTable& table : radiograph.tables) {
    PaintLevels(radiograph, ComputeBrightness(radiograph, table), image);
  }
  PaintLevels(radiograph, ComputeBrightness(radiograph, FullWindow(radiograph)), image);
  Require(image.size() == QSize(radiograph.width, radiograph.height), "the picture has its size");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ReadResult result = DecodePicture({data, size}, kSmall);
  const std::string answer = ComposeAnswer(result);
  const ReadResult parsed = ParseAnswer(answer);
  Require(ComposeAnswer(parsed) == answer, "an answer comes through as it was");
  if (const auto* radiograph = std::get_if<Radiograph>(&parsed)) {
    Show(*radiograph);
    FindScale(radiograph->scale);
  } else {
    Require(!FailureText(std::get<ReadFailure>(parsed)).empty(), "a refusal has its words");
  }
  return 0;
}
