// Any bytes as kept work: refused, or work that composing and parsing keep.
#include <cstddef>
#include <cstdint>

#include "case/kept_work.h"
#include "tests/fuzz/require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  if (const auto work = Vse::ParseKeptWork(text)) {
    Require(Vse::ParseKeptWork(Vse::ComposeKeptWork(*work)) == work,
            "kept work comes back as it was");
  }
  return 0;
}
