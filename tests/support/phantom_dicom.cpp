#include "tests/support/phantom_dicom.h"

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcostrmb.h>
#include <dcmtk/dcmdata/dctk.h>

#include <cstdio>
#include <fstream>
#include <utility>

namespace {

using std::string;
using Texts = std::vector<std::pair<DcmTagKey, const char*>>;

void Put(DcmItem& item, const Texts& texts) {
  for (const auto& [tag, text] : texts) item.putAndInsertString(tag, text);
}

void PutIdentity(DcmItem& item) {
  Put(item, {{DCM_SpecificCharacterSet, "ISO_IR 192"},
             {DCM_PatientName, "Phantom^Pelvis"},
             {DCM_PatientID, "P1"},
             {DCM_PatientBirthDate, "19561115"},
             {DCM_PatientSex, "F"},
             {DCM_StudyInstanceUID, "1.2.826.0.1.3680043.9.7433.1.1"},
             {DCM_SeriesInstanceUID, "1.2.826.0.1.3680043.9.7433.1.2"},
             {DCM_SOPInstanceUID, "1.2.826.0.1.3680043.9.7433.1.3"},
             {DCM_StudyDate, "20261115"},
             {DCM_StudyTime, "101500"},
             {DCM_ReferringPhysicianName, ""},
             {DCM_StudyID, "1"},
             {DCM_AccessionNumber, ""},
             {DCM_SeriesNumber, "1"},
             {DCM_InstanceNumber, "1"},
             {DCM_Manufacturer, "Phantom"},
             {DCM_BodyPartExamined, "PELVIS"},
             {DCM_ViewPosition, "AP"},
             {DCM_PatientOrientation, "L\\F"},
             {DCM_BurnedInAnnotation, "NO"},
             {DCM_LossyImageCompression, "00"}});
}

void PutCode(DcmItem& item, const DcmTagKey& sequence, const char* code, const char* scheme,
             const char* meaning) {
  DcmItem* entry = nullptr;
  item.findOrCreateSequenceItem(sequence, entry, -2);
  Put(*entry,
      {{DCM_CodeValue, code}, {DCM_CodingSchemeDesignator, scheme}, {DCM_CodeMeaning, meaning}});
}

void PutComputedRadiography(DcmItem& item) {
  Put(item, {{DCM_SOPClassUID, UID_ComputedRadiographyImageStorage},
             {DCM_Modality, "CR"},
             {DCM_ImageType, "ORIGINAL\\PRIMARY"},
             {DCM_PhotometricInterpretation, "MONOCHROME2"}});
}

void PutDigitalXRay(DcmItem& item) {
  Put(item, {{DCM_SOPClassUID, UID_DigitalXRayImageStorageForPresentation},
             {DCM_Modality, "DX"},
             {DCM_PresentationIntentType, "FOR PRESENTATION"},
             {DCM_ImageType, "ORIGINAL\\PRIMARY\\"},
             {DCM_PixelIntensityRelationship, "LOG"},
             {DCM_PixelIntensityRelationshipSign, "-1"},
             {DCM_RescaleIntercept, "0"},
             {DCM_RescaleSlope, "1"},
             {DCM_RescaleType, "US"},
             {DCM_PresentationLUTShape, "IDENTITY"},
             {DCM_PhotometricInterpretation, "MONOCHROME2"},
             {DCM_ImageLaterality, "U"},
             {DCM_DetectorType, "DIRECT"},
             {DCM_ImagerPixelSpacing, "0.143\\0.143"},
             {DCM_PositionerType, ""},
             {DCM_WindowCenter, "2048"},
             {DCM_WindowWidth, "4096"}});
  PutCode(item, DCM_AnatomicRegionSequence, "12921003", "SCT", "Pelvis");
  PutCode(item, DCM_ViewCodeSequence, "399348003", "SCT", "antero-posterior");
  item.insertEmptyElement(DCM_AcquisitionContextSequence);
}

void PutFormat(DcmItem& item, const PhantomDicom& phantom) {
  const auto put = [&item](const DcmTagKey& tag, int number) {
    item.putAndInsertUint16(tag, static_cast<Uint16>(number));
  };
  put(DCM_SamplesPerPixel, 1);
  put(DCM_Rows, phantom.rows);
  put(DCM_Columns, phantom.columns);
  put(DCM_BitsAllocated, phantom.bitsAllocated);
  put(DCM_BitsStored, phantom.bitsStored);
  put(DCM_HighBit, phantom.bitsStored - 1);
  put(DCM_PixelRepresentation, phantom.isSigned ? 1 : 0);
}

void PutPixels(DcmItem& item, const PhantomDicom& phantom) {
  if (phantom.bitsAllocated == 16) {
    item.putAndInsertUint16Array(DCM_PixelData, phantom.pixels.data(), phantom.pixels.size());
    return;
  }
  std::vector<Uint8> bytes;
  for (const std::uint16_t pixel : phantom.pixels) bytes.push_back(static_cast<Uint8>(pixel));
  if (bytes.size() % 2 == 1) bytes.push_back(0);
  item.putAndInsertUint8Array(DCM_PixelData, bytes.data(), bytes.size());
}

bool PutAttributes(DcmItem& item, const std::map<string, string>& attributes) {
  for (const auto& [keyword, text] : attributes) {
    DcmTag tag;
    if (DcmTag::findTagFromName(keyword.c_str(), tag).bad()) return false;
    item.findAndDeleteElement(tag);
    if (!text.empty() && item.putAndInsertString(tag, text.c_str()).bad()) return false;
  }
  return true;
}

bool Fill(DcmItem& item, const PhantomDicom& phantom) {
  PutIdentity(item);
  if (phantom.kind == DeviceKind::DigitalXRay) {
    PutDigitalXRay(item);
  } else {
    PutComputedRadiography(item);
  }
  PutFormat(item, phantom);
  PutPixels(item, phantom);
  return PutAttributes(item, phantom.attributes);
}

string Pair(double spacing) {
  char text[64];
  std::snprintf(text, sizeof text, "%.8g\\%.8g", spacing, spacing);
  return text;
}

string Text(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%.8g", number);
  return text;
}

}  // namespace

std::map<string, std::map<string, string>> ScaleForms(double detector, double sourceToDetector,
                                                      double sourceToTable) {
  const double magnification = sourceToDetector / sourceToTable;
  const string atDetector = Pair(detector);
  const string atTable = Pair(detector / magnification);
  const std::map<string, string> none{{"ImagerPixelSpacing", ""}};
  return {
      {"fiducial",
       {{"ImagerPixelSpacing", atDetector},
        {"PixelSpacing", atTable},
        {"PixelSpacingCalibrationType", "FIDUCIAL"},
        {"PixelSpacingCalibrationDescription", "ball"}}},
      {"geometry",
       {{"ImagerPixelSpacing", atDetector},
        {"PixelSpacing", atTable},
        {"PixelSpacingCalibrationType", "GEOMETRY"},
        {"PixelSpacingCalibrationDescription", "table"}}},
      {"corrected", {{"ImagerPixelSpacing", atDetector}, {"PixelSpacing", atTable}}},
      {"magnification",
       {{"ImagerPixelSpacing", atDetector},
        {"EstimatedRadiographicMagnificationFactor", Text(magnification)}}},
      {"distances",
       {{"ImagerPixelSpacing", atDetector},
        {"DistanceSourceToDetector", Text(sourceToDetector)},
        {"DistanceSourceToPatient", Text(sourceToTable)}}},
      {"pixel spacing", {{"ImagerPixelSpacing", ""}, {"PixelSpacing", atDetector}}},
      {"detector", {{"ImagerPixelSpacing", atDetector}}},
      {"scanned", {{"ImagerPixelSpacing", ""}, {"NominalScannedPixelSpacing", atDetector}}},
      {"aspect", {{"ImagerPixelSpacing", ""}, {"PixelAspectRatio", "1\\1"}}},
      {"none", none},
  };
}

string ComposePhantomDicom(const PhantomDicom& phantom) {
  DcmFileFormat file;
  if (!Fill(*file.getDataset(), phantom)) return {};
  string bytes(phantom.pixels.size() * 2 + (1 << 20), '\0');
  DcmOutputBufferStream stream(bytes.data(), static_cast<offile_off_t>(bytes.size()));
  file.transferInit();
  const OFCondition written = file.write(stream, EXS_LittleEndianExplicit, EET_ExplicitLength,
                                         nullptr, EGL_recalcGL, EPD_noChange);
  file.transferEnd();
  if (written.bad()) return {};
  void* filled = nullptr;
  offile_off_t length = 0;
  stream.flushBuffer(filled, length);
  bytes.resize(static_cast<std::size_t>(length));
  return bytes;
}

bool WritePhantomDicom(const string& path, const PhantomDicom& phantom) {
  const string bytes = ComposePhantomDicom(phantom);
  std::ofstream file(path, std::ios::binary);
  file << bytes;
  return !bytes.empty() && file.flush().good();
}
