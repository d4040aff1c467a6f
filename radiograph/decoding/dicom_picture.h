// A DICOM file as a radiograph, by way of DCMTK. What DCMTK reads is checked here first: sizes,
// also those inside a compressed picture, before memory is taken for them.
#pragma once

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>

#include "radiograph/decoding/refusal.h"
#include "radiograph/limits.h"
#include "radiograph/radiograph.h"

namespace Radiography {

Radiograph DecodeDicom(Bytes file, const PictureLimits& limits);

// The parts of it.

// Which decompressor reads a transfer syntax.
enum class Packing { None, RunLength, Jpeg, JpegLs, Jpeg2000 };
struct Syntax {
  Packing packing;
  bool lossy;
};
// Refuses those that cannot be read.
Syntax SyntaxOf(E_TransferSyntax syntax);

// How a pixel lies in the file.
struct PixelFormat {
  int width = 0;
  int height = 0;
  int allocated = 0;  // bits: 8 or 16
  int stored = 0;     // bits
  int highBit = 0;    // the number of the highest of them
  bool isSigned = false;

  // The lowest stored value, which becomes level 0.
  std::int32_t Lowest() const { return isSigned ? -(1 << (stored - 1)) : 0; }
};

PixelFormat ReadPixelFormat(DcmItem& dataset, const PictureLimits& limits);

// Words as they come from the decompressor.
struct PixelWords {
  std::vector<std::uint16_t> words;
  int precision = 0;   // bits of a word that were compressed
  bool exact = false;  // as they were stored, with the high bit where it was
};

PixelWords ReadFirstFrame(DcmDataset& dataset, const PixelFormat& format);

// Decodes one JPEG 2000 picture, whose size must be the format's.
PixelWords DecodeJpeg2000(Bytes codestream, const PixelFormat& format);

// Stored values, from 0 for the lowest; those that loss of compression took too far are clamped.
std::vector<std::uint16_t> ToLevels(PixelWords pixels, const PixelFormat& format);

// Modality LUT or rescale, windows and brightness tables, and whether dark is bright.
void ReadShown(DcmItem& dataset, const PixelFormat& format, Radiograph& radiograph);

// Patient, dates, orientation and scale.
void ReadTexts(DcmItem& dataset, Radiograph& radiograph);

}  // namespace Radiography
