// Reads a DICOM file and puts its parts together.
#include <dcmtk/dcmdata/dcistrmb.h>

#include "radiograph/decoding/dicom_picture.h"
#include "radiograph/decoding/dicom_values.h"

namespace Radiography {

namespace {

void Silence() {
  OFLog::configure(OFLogger::OFF_LOG_LEVEL);
  dcmEnableAutomaticInputDataCorrection.set(OFTrue);
}

// The transfer syntax that the head names, if there is a head. Known before anything is made of
// what follows: DCMTK takes a syntax that it does not know for plain.
E_TransferSyntax ReadHead(DcmInputStream& stream) {
  DcmMetaInfo head;
  head.transferInit();
  head.read(stream, EXS_Unknown, EGL_noChange, DCM_MaxReadLength);
  head.transferEnd();
  const std::string uid = FirstTextOf(head, DCM_TransferSyntaxUID);
  if (uid.empty()) return EXS_Unknown;
  const E_TransferSyntax syntax = DcmXfer(uid.c_str()).getXfer();
  if (syntax == EXS_Unknown) Refuse(ReadTrouble::UnknownSyntax, uid);
  SyntaxOf(syntax);
  return syntax;
}

void Give(DcmInputBufferStream& stream, Bytes bytes) {
  stream.setBuffer(bytes.data(), static_cast<offile_off_t>(bytes.size()));
  stream.setEos();
}

// A few bytes can inflate to any number.
std::vector<std::uint8_t> Inflate(DcmInputStream& stream, const PictureLimits& limits) {
  constexpr std::size_t kStep = 1 << 20;
  std::vector<std::uint8_t> bytes;
  if (stream.installCompressionFilter(ESC_zlib).bad()) Refuse(ReadTrouble::Damaged);
  for (std::size_t filled = 0;;) {
    bytes.resize(filled + kStep);
    const offile_off_t got = stream.read(bytes.data() + filled, kStep);
    if (got <= 0) {
      bytes.resize(filled);
      return bytes;
    }
    filled += static_cast<std::size_t>(got);
    if (static_cast<std::int64_t>(filled) > limits.bytes) Refuse(ReadTrouble::TooLarge);
  }
}

void Check(const OFCondition& read) {
  if (read.good()) return;
  if (read == EC_MemoryExhausted) Refuse(ReadTrouble::TooMuchMemory);
  if (read == EC_StreamNotifyClient || read == EC_EndOfStream) Refuse(ReadTrouble::CutShort);
  Refuse(ReadTrouble::Damaged, read.text());
}

void LoadInflated(DcmDataset& dataset, Bytes bytes) {
  DcmInputBufferStream stream;
  Give(stream, bytes);
  dataset.transferInit();
  const OFCondition read =
      dataset.read(stream, EXS_LittleEndianExplicit, EGL_noChange, DCM_MaxReadLength);
  dataset.transferEnd();
  Check(read);
}

void Load(DcmFileFormat& file, Bytes bytes, const PictureLimits& limits) {
  DcmInputBufferStream head;
  Give(head, bytes);
  if (ReadHead(head) == EXS_DeflatedLittleEndianExplicit) {
    LoadInflated(*file.getDataset(), Inflate(head, limits));
    return;
  }
  DcmInputBufferStream stream;
  Give(stream, bytes);
  file.transferInit();
  const OFCondition read = file.read(stream, EXS_Unknown, EGL_noChange, DCM_MaxReadLength);
  file.transferEnd();
  Check(read);
}

void NoteFrames(DcmItem& dataset, Radiograph& radiograph) {
  Sint32 frames = 1;
  dataset.findAndGetSint32(DCM_NumberOfFrames, frames);
  if (frames < 2) return;
  radiograph.frames = frames;
  radiograph.notes.push_back("the file has " + std::to_string(frames) +
                             " pictures; this is the first");
}

}  // namespace

Radiograph DecodeDicom(Bytes bytes, const PictureLimits& limits) {
  Silence();
  DcmFileFormat file;
  Load(file, bytes, limits);
  DcmDataset& dataset = *file.getDataset();
  const PixelFormat format = ReadPixelFormat(dataset, limits);
  Radiograph radiograph;
  radiograph.width = format.width;
  radiograph.height = format.height;
  radiograph.levels = ToLevels(ReadFirstFrame(dataset, format), format);
  NoteFrames(dataset, radiograph);
  ReadShown(dataset, format, radiograph);
  ReadTexts(dataset, radiograph);
  return radiograph;
}

}  // namespace Radiography
