// Reads a DICOM file and puts its parts together.
#include <dcmtk/dcmdata/dcistrmb.h>

#include "radiograph/decoding/dicom_picture.h"


namespace {

void Silence() {
  OFLog::configure(OFLogger::OFF_LOG_LEVEL);
  dcmEnableAutomaticInputDataCorrection.set(OFTrue);
}

void Load(DcmFileFormat& file, Bytes bytes) {
  DcmInputBufferStream stream;
  stream.setBuffer(bytes.data(), static_cast<offile_off_t>(bytes.size()));
  stream.setEos();
  file.transferInit();
  const OFCondition read = file.read(stream, EXS_Unknown, EGL_noChange, DCM_MaxReadLength);
  file.transferEnd();
  if (read.good()) return;
  if (read == EC_MemoryExhausted) Refuse(ReadTrouble::TooMuchMemory);
  if (read == EC_UnsupportedEncoding || read == EC_UnknownTransferSyntax) {
    Refuse(ReadTrouble::UnknownSyntax);
  }
  if (read == EC_StreamNotifyClient || read == EC_EndOfStream) Refuse(ReadTrouble::CutShort);
  Refuse(ReadTrouble::Damaged, read.text());
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
  Load(file, bytes);
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
