// What a DICOM file says in words: patient, dates, orientation, and the values that make the scale.
#include <dcmtk/dcmdata/dcspchrs.h>

#include <algorithm>
#include <charconv>

#include "radiograph/decoding/dicom_picture.h"
#include "radiograph/decoding/dicom_values.h"

namespace Radiography {

namespace {

using std::string;

// A name in the file's character set as UTF-8; nothing if it is not text in that set.
std::optional<string> Utf8(DcmItem& dataset, const string& text) {
  DcmSpecificCharacterSet set;
  OFString converted;
  OFString given;
  dataset.findAndGetOFStringArray(DCM_SpecificCharacterSet, given);
  if (set.selectCharacterSet(given).bad()) return {};
  const OFString original(text.data(), text.size());
  if (set.convertString(original, converted, "\\^=").bad()) return {};
  return string(converted.data(), converted.size());
}

// The part with the given number between carets.
string Part(const string& name, int number) {
  std::size_t begin = 0;
  for (; number > 0; --number) {
    begin = name.find('^', begin);
    if (begin == string::npos) return {};
    ++begin;
  }
  return Cleaned(name.substr(begin, name.find('^', begin) - begin));
}

bool IsPlain(const string& text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
}

void ReadName(DcmItem& dataset, Radiograph& radiograph) {
  const string given = TextOf(dataset, DCM_PatientName);
  auto text = Utf8(dataset, given);
  // Plain letters are the same in every set, also in one that this system lacks.
  const string first = given.substr(0, given.find('='));
  if (!text && IsPlain(first)) text = first;
  if (!text) {
    radiograph.notes.emplace_back(
        "the patient's name is not in the character set that the file names");
    return;
  }
  // Letters come first; the same name in ideographs and in sounds follows.
  const string letters = text->substr(0, text->find('='));
  const string name =
      letters.empty() && text->starts_with('=') ? text->substr(1, text->find('=', 1) - 1) : letters;
  radiograph.patient.familyName = Part(name, 0);
  radiograph.patient.givenName = Part(name, 1);
}

// 19561115, or with points as before 1993.
Date DateOf(string text) {
  std::erase(text, '.');
  if (text.size() != 8 || !std::all_of(text.begin(), text.end(), [](char letter) {
        return letter >= '0' && letter <= '9';
      })) {
    return {};
  }
  const int number = std::stoi(text);
  const Date date = std::chrono::year(number / 10000) /
                    std::chrono::month(static_cast<unsigned>(number / 100 % 100)) /
                    std::chrono::day(static_cast<unsigned>(number % 100));
  return date->ok() ? date : Date();
}

PatientSex SexOf(const string& letter) {
  if (letter == "M") return PatientSex::Male;
  if (letter == "F") return PatientSex::Female;
  return letter == "O" ? PatientSex::Other : PatientSex::Unknown;
}

bool IsDirection(const string& text) {
  return !text.empty() && text.find_first_not_of("LRAPHF") == string::npos;
}

void ReadOrientation(DcmItem& dataset, Radiograph& radiograph) {
  const auto directions = TextsOf(dataset, DCM_PatientOrientation);
  if (directions.size() != 2 || !IsDirection(directions[0]) || !IsDirection(directions[1])) return;
  radiograph.rowDirection = directions[0];
  radiograph.columnDirection = directions[1];
}

ScaleAttributes ReadScale(DcmItem& dataset) {
  return {NumbersOf(dataset, DCM_PixelSpacing),
          NumbersOf(dataset, DCM_ImagerPixelSpacing),
          NumbersOf(dataset, DCM_NominalScannedPixelSpacing),
          FirstTextOf(dataset, DCM_PixelSpacingCalibrationType),
          NumbersOf(dataset, DCM_EstimatedRadiographicMagnificationFactor),
          NumbersOf(dataset, DCM_DistanceSourceToDetector),
          NumbersOf(dataset, DCM_DistanceSourceToPatient),
          NumbersOf(dataset, DCM_PixelAspectRatio)};
}

}  // namespace

void ReadTexts(DcmItem& dataset, Radiograph& radiograph) {
  ReadName(dataset, radiograph);
  radiograph.patient.birth = DateOf(FirstTextOf(dataset, DCM_PatientBirthDate));
  radiograph.patient.sex = SexOf(FirstTextOf(dataset, DCM_PatientSex));
  radiograph.studyDate = DateOf(FirstTextOf(dataset, DCM_StudyDate));
  ReadOrientation(dataset, radiograph);
  radiograph.sopInstanceUid = FirstTextOf(dataset, DCM_SOPInstanceUID);
  radiograph.scale = ReadScale(dataset);
}

}  // namespace Radiography
