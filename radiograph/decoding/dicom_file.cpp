// Reads a DICOM file and puts its parts together.
#include <dcmtk/dcmdata/dcistrmb.h>

#include "radiograph/decoding/dicom_picture.h"
#include "radiograph/decoding/dicom_values.h"


namespace {

void Silence() {
  OFLog::configure(OFLogger::OFF_LOG_LEVEL);
  dcmEnableAutomaticInputDataCorrection.set(OFTrue);
}

// Before anything is made of what follows: DCMTK takes a syntax that it does not know for plain.
void CheckSyntax(DcmMetaInfo& head) {
  const std::string uid = FirstTextOf(head, DCM_TransferSyntaxUID);
  if (uid.empty()) return;
  const DcmXfer syntax(uid.c_str());
  if (syntax.getXfer() == EXS_Unknown) Refuse(ReadTrouble::UnknownSyntax, uid);
  SyntaxOf(syntax.getXfer());
}

void Load(DcmFileFormat& file, Bytes bytes) {
  DcmInputBufferStream stream;
  stream.setBuffer(bytes.data(), static_cast<offile_off_t>(bytes.size()));
  stream.setEos();
  file.transferInit();
  const OFCondition read = file.read(stream, EXS_Unknown, EGL_noChange, DCM_MaxReadLength);
  file.transferEnd();
  CheckSyntax(*file.getMetaInfo());
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
