// The words of the first frame, through whatever compression.
#include <dcmtk/dcmdata/dccodec.h>
#include <dcmtk/dcmdata/dcpixel.h>
#include <dcmtk/dcmdata/dcpixseq.h>
#include <dcmtk/dcmdata/dcpxitem.h>
#include <dcmtk/dcmdata/dcrledrg.h>
#include <dcmtk/dcmjpeg/djdecode.h>
#include <dcmtk/dcmjpls/djdecode.h>

#include <cstring>

#include "radiograph/decoding/codestream_size.h"
#include "radiograph/decoding/dicom_picture.h"

namespace Radiography {

namespace {

// DCMTK keeps its decompressors in a list of the process.
class Decompressors {
 public:
  Decompressors() {
    DcmRLEDecoderRegistration::registerCodecs();
    DJDecoderRegistration::registerCodecs();
    DJLSDecoderRegistration::registerCodecs();
  }
  Decompressors(const Decompressors&) = delete;
  Decompressors& operator=(const Decompressors&) = delete;
  ~Decompressors() {
    DcmRLEDecoderRegistration::cleanup();
    DJDecoderRegistration::cleanup();
    DJLSDecoderRegistration::cleanup();
  }
};

DcmPixelData& PixelsOf(DcmItem& dataset) {
  DcmElement* element = nullptr;
  if (dataset.findAndGetElement(DCM_PixelData, element).bad()) Refuse(ReadTrouble::NotAPicture);
  auto* pixels = dynamic_cast<DcmPixelData*>(element);
  if (pixels == nullptr) Refuse(ReadTrouble::Damaged);
  return *pixels;
}

DcmPixelSequence& FragmentsOf(DcmPixelData& pixels) {
  E_TransferSyntax syntax = EXS_Unknown;
  const DcmRepresentationParameter* parameter = nullptr;
  pixels.getOriginalRepresentationKey(syntax, parameter);
  DcmPixelSequence* fragments = nullptr;
  if (pixels.getEncapsulatedRepresentation(syntax, parameter, fragments).bad() ||
      fragments == nullptr) {
    Refuse(ReadTrouble::Damaged);
  }
  return *fragments;
}

// The number of the fragment behind those of the first frame; the table of offsets is number 0.
unsigned long EndOfFirstFrame(DcmPixelSequence& fragments, long frames) {
  Uint32 second = 0;
  if (frames < 2) return fragments.card();
  const auto found =
      DcmCodec::determineStartFragment(1, static_cast<Sint32>(frames), &fragments, second);
  return found.good() && second > 1 ? second : fragments.card();
}

std::vector<std::uint8_t> FirstFrame(DcmPixelSequence& fragments, long frames) {
  std::vector<std::uint8_t> bytes;
  const unsigned long end = EndOfFirstFrame(fragments, frames);
  for (unsigned long number = 1; number < end; ++number) {
    DcmPixelItem* item = nullptr;
    Uint8* content = nullptr;
    if (fragments.getItem(item, number).bad() || item->getUint8Array(content).bad()) break;
    if (content != nullptr) bytes.insert(bytes.end(), content, content + item->getLength());
  }
  if (bytes.empty()) Refuse(ReadTrouble::CutShort);
  return bytes;
}

// The precision, when the compressed picture is the one that the file describes.
int CheckedPrecision(Bytes codestream, const PixelFormat& format) {
  const auto size = JpegSize(codestream);
  if (!size) Refuse(ReadTrouble::Damaged);
  if (size->components != 1) Refuse(ReadTrouble::Colour);
  if (size->width != static_cast<std::uint32_t>(format.width) ||
      size->height != static_cast<std::uint32_t>(format.height)) {
    Refuse(ReadTrouble::Contradiction,
           "the compressed picture has another size than the file says");
  }
  if (size->bits < 2 || size->bits > static_cast<unsigned>(format.allocated)) {
    Refuse(ReadTrouble::Contradiction, "the compressed picture has more bits than the file says");
  }
  return static_cast<int>(size->bits);
}

std::vector<std::uint16_t> Widened(const std::vector<std::uint16_t>& packed, std::size_t count) {
  std::vector<std::uint16_t> words(count);
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(packed.data());
  std::copy(bytes, bytes + count, words.begin());
  return words;
}

ReadTrouble TroubleOf(const OFCondition& condition) {
  if (condition == EC_MemoryExhausted) return ReadTrouble::TooMuchMemory;
  if (condition == EC_StreamNotifyClient || condition == EC_InvalidOffset) {
    return ReadTrouble::CutShort;
  }
  return ReadTrouble::Damaged;
}

std::vector<std::uint16_t> Decompress(DcmDataset& dataset, DcmPixelData& pixels,
                                      const PixelFormat& format) {
  const Decompressors registered;
  const std::size_t count = std::size_t(format.width) * std::size_t(format.height);
  const std::size_t size = count * std::size_t(format.allocated / 8);
  std::vector<std::uint16_t> words((size + 1) / 2);
  Uint32 fragment = 0;
  OFString colours;
  const OFCondition done = pixels.getUncompressedFrame(
      &dataset, 0, fragment, words.data(), static_cast<Uint32>(words.size() * 2), colours);
  if (done.bad()) Refuse(TroubleOf(done), done.text());
  return format.allocated == 8 ? Widened(words, count) : words;
}

void CheckLength(DcmPixelData& pixels, const PixelFormat& format) {
  const std::size_t wanted =
      std::size_t(format.width) * std::size_t(format.height) * std::size_t(format.allocated / 8);
  if (pixels.getLength() < wanted) Refuse(ReadTrouble::CutShort);
}

}  // namespace

Syntax SyntaxOf(E_TransferSyntax syntax) {
  switch (syntax) {
    case EXS_LittleEndianImplicit:
    case EXS_LittleEndianExplicit:
    case EXS_BigEndianExplicit:
    case EXS_BigEndianImplicit:
    case EXS_DeflatedLittleEndianExplicit:
      return {Packing::None, false};
    case EXS_RLELossless:
      return {Packing::RunLength, false};
    case EXS_JPEGProcess14:
    case EXS_JPEGProcess14SV1:
      return {Packing::Jpeg, false};
    case EXS_JPEGProcess1:
    case EXS_JPEGProcess2_4:
    case EXS_JPEGProcess6_8:
    case EXS_JPEGProcess10_12:
      return {Packing::Jpeg, true};
    case EXS_JPEGLSLossless:
      return {Packing::JpegLs, false};
    case EXS_JPEGLSLossy:
      return {Packing::JpegLs, true};
    case EXS_JPEG2000LosslessOnly:
      return {Packing::Jpeg2000, false};
    case EXS_JPEG2000:
      return {Packing::Jpeg2000, true};
    default:
      Refuse(ReadTrouble::UnknownSyntax, DcmXfer(syntax).getXferName());
  }
}

PixelWords ReadFirstFrame(DcmDataset& dataset, const PixelFormat& format) {
  DcmPixelData& pixels = PixelsOf(dataset);
  const Syntax syntax = SyntaxOf(dataset.getOriginalXfer());
  Sint32 frames = 1;
  dataset.findAndGetSint32(DCM_NumberOfFrames, frames);
  int precision = format.stored;
  if (syntax.packing == Packing::None) {
    CheckLength(pixels, format);
  } else if (syntax.packing != Packing::RunLength) {
    const auto codestream = FirstFrame(FragmentsOf(pixels), frames);
    if (syntax.packing == Packing::Jpeg2000) return DecodeJpeg2000(codestream, format);
    precision = CheckedPrecision(codestream, format);
  }
  return {Decompress(dataset, pixels, format), precision, !syntax.lossy};
}

}  // namespace Radiography
