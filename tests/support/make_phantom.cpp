// Writes a radiograph of a made-up pelvis as a DICOM file: make_phantom FILE [SEED].
#include <cstdio>
#include <string>

#include "tests/support/phantom.h"
#include "tests/support/phantom_dicom.h"

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fputs("usage: make_phantom FILE [SEED]\n", stderr);
    return 2;
  }
  Phantom::Setup setup;
  setup.ball = Phantom::Ball();
  if (argc > 2) setup.seed = std::stoul(argv[2]);
  const Phantom::Picture picture = Phantom::Render({}, setup);
  PhantomDicom file;
  file.rows = picture.height;
  file.columns = picture.width;
  file.pixels = picture.grey;
  file.attributes = {{"ImagerPixelSpacing", "0.24\\0.24"}, {"PatientOrientation", "L\\F"}};
  if (WritePhantomDicom(argv[1], file)) return 0;
  std::fprintf(stderr, "make_phantom: %s cannot be written\n", argv[1]);
  return 1;
}
