// What a DICOM file says in words.
#include <QCryptographicHash>

#include "tests/radiograph/sample_files.h"
#include "tests/support/row_name.h"

using namespace Radiography;

namespace {

using namespace std::chrono;

PhantomDicom MakeWith(const std::map<std::string, std::string>& attributes) {
  PhantomDicom disk = MakeDisk(12, false);
  disk.attributes = attributes;
  return disk;
}

class Texts : public ReadingFiles {};

TEST_F(Texts, OfPatientStudyAndPicture) {
  const std::string path = Save(MakeDisk(12, false));
  const Radiograph radiograph = MustRead(path);
  EXPECT_EQ(radiograph.patient,
            (Patient{"Phantom", "Pelvis", 1956y / November / 15, PatientSex::Female}));
  EXPECT_EQ(radiograph.studyDate, 2026y / November / 15);
  EXPECT_EQ(radiograph.rowDirection, "L");
  EXPECT_EQ(radiograph.columnDirection, "F");
  EXPECT_EQ(radiograph.sopInstanceUid, "1.2.826.0.1.3680043.9.7433.1.3");
  EXPECT_EQ(radiograph.frames, 1);
  EXPECT_EQ(radiograph.notes, std::vector<std::string>{});
  QProcess sum;
  sum.start("sha256sum", {QString::fromStdString(path)});
  ASSERT_TRUE(sum.waitForFinished());
  EXPECT_EQ(radiograph.sha256, sum.readAllStandardOutput().left(64).toStdString());
}

struct NameRow {
  const char* name;
  const char* set;
  const char* bytes;
  const char* family;  // UTF-8
  const char* given;
};

// Some of them are the examples of the standard (PS3.5 annexes H to K).
const NameRow kNames[] = {
    {"PlainLetters", "", "Novak^Ana", "Novak", "Ana"},
    {"MiddleNamePrefixAndSuffixAreLeftOut", "", "Adams^John^Robert^Rev.^B.A.", "Adams", "John"},
    {"FamilyNameAlone", "", "Novak", "Novak", ""},
    {"GivenNameAlone", "", "^Ana", "", "Ana"},
    {"Blanks", "", " Novak ^ Ana ", "Novak", "Ana"},
    {"Latin1", "ISO_IR 100", "Buc^J\xe9r\xf4me", "Buc", "Jérôme"},
    {"Latin2", "ISO_IR 101",
     "\xae"
     "ebovec^\xc8"
     "rt",
     "Žebovec", "Črt"},
    {"Cyrillic", "ISO_IR 144", "\xbb\xee\xda\x63\xd5\xdc\xd1\xe3\xe0\xd3",
     "Люкc"
     "ембург",
     ""},
    {"Greek", "ISO_IR 126", "\xc4\xe9\xef\xed\xf5\xf3\xe9\xef\xf2", "Διονυσιος", ""},
    {"Utf8", "ISO_IR 192", "Wang^XiaoDong=王^小东", "Wang", "XiaoDong"},
    {"IdeographsAlone", "ISO_IR 192", "=王^小东", "王", "小东"},
    {"JapaneseWithEscapes", "\\ISO 2022 IR 87", "Yamada^Tarou=\x1b$B;3ED\x1b(B^\x1b$BB@O:\x1b(B",
     "Yamada", "Tarou"},
};

class Name : public ReadingFiles, public testing::WithParamInterface<NameRow> {};

TEST_P(Name, IsReadByItsCharacterSet) {
  const Radiograph radiograph = MustRead(Save(
      MakeWith({{"SpecificCharacterSet", GetParam().set}, {"PatientName", GetParam().bytes}})));
  EXPECT_EQ(radiograph.patient.familyName, GetParam().family);
  EXPECT_EQ(radiograph.patient.givenName, GetParam().given);
  EXPECT_EQ(radiograph.notes, std::vector<std::string>{});
}

INSTANTIATE_TEST_SUITE_P(Of, Name, testing::ValuesIn(kNames), RowName());

TEST_F(Texts, ANameOutsideItsCharacterSetIsNotGuessed) {
  const Radiograph radiograph = MustRead(Save(
      MakeWith({{"SpecificCharacterSet", "ISO_IR 192"}, {"PatientName", "Buc^J\xe9r\xf4me"}})));
  EXPECT_EQ(radiograph.patient.familyName, "");
  ASSERT_EQ(radiograph.notes.size(), 1U);
  EXPECT_NE(radiograph.notes[0].find("name"), std::string::npos);
}

TEST_F(Texts, ControlCharactersDoNotComeThrough) {
  const Radiograph radiograph = MustRead(Save(MakeWith({{"PatientName", "No\r\nvak^A\tna"}})));
  EXPECT_EQ(radiograph.patient.familyName, "Novak");
  EXPECT_EQ(radiograph.patient.givenName, "Ana");
}

TEST_F(Texts, DatesThatDoNotExistAreNotKnown) {
  for (const char* date : {"20260231", "1956", "19561315", "yesterday", "00000000", "2026-1-1"}) {
    const Radiograph radiograph =
        MustRead(Save(MakeWith({{"PatientBirthDate", date}, {"StudyDate", date}})));
    EXPECT_EQ(radiograph.patient.birth, Date()) << date;
    EXPECT_EQ(radiograph.studyDate, Date()) << date;
  }
  EXPECT_EQ(MustRead(Save(MakeWith({{"StudyDate", "1992.11.05"}}))).studyDate,
            1992y / November / 5);
}

TEST_F(Texts, SexIsOneOfThreeOrNotKnown) {
  for (const auto& [letter, sex] : {std::pair{"M", PatientSex::Male},
                                    {"F", PatientSex::Female},
                                    {"O", PatientSex::Other},
                                    {"X", PatientSex::Unknown},
                                    {"", PatientSex::Unknown}}) {
    EXPECT_EQ(MustRead(Save(MakeWith({{"PatientSex", letter}}))).patient.sex, sex) << letter;
  }
}

TEST_F(Texts, AnOrientationThatIsNoneIsNotKnown) {
  for (const char* orientation : {"L", "L\\F\\H", "X\\F", "\\F", ""}) {
    const Radiograph radiograph = MustRead(Save(MakeWith({{"PatientOrientation", orientation}})));
    EXPECT_EQ(radiograph.rowDirection + radiograph.columnDirection, "") << orientation;
  }
  EXPECT_EQ(MustRead(Save(MakeWith({{"PatientOrientation", "RA\\F"}}))).rowDirection, "RA");
}

TEST_F(Texts, OfTheScaleComeThroughAsTheyStand) {
  const Radiograph radiograph =
      MustRead(Save(MakeWith({{"PixelSpacing", "0.12\\0.13"},
                              {"ImagerPixelSpacing", "+0.15\\1.5e-1"},
                              {"NominalScannedPixelSpacing", "0.1"},
                              {"PixelSpacingCalibrationType", "FIDUCIAL"},
                              {"EstimatedRadiographicMagnificationFactor", "1.2x"},
                              {"DistanceSourceToDetector", "1150"},
                              {"DistanceSourceToPatient", "-3"},
                              {"PixelAspectRatio", "4\\3"}})));
  const ScaleAttributes& scale = radiograph.scale;
  EXPECT_EQ(scale.pixelSpacing, (std::vector{0.12, 0.13}));
  EXPECT_EQ(scale.imagerPixelSpacing, (std::vector{0.15, 0.15}));
  EXPECT_EQ(scale.nominalScannedPixelSpacing, std::vector{0.1});
  EXPECT_EQ(scale.calibrationType, "FIDUCIAL");
  ASSERT_EQ(scale.magnification.size(), 1U);
  EXPECT_TRUE(std::isnan(scale.magnification[0]));
  EXPECT_EQ(scale.sourceToDetector, std::vector{1150.0});
  EXPECT_EQ(scale.sourceToTable, std::vector{-3.0});
  EXPECT_EQ(scale.pixelAspectRatio, (std::vector{4.0, 3.0}));
}

// Every form of scale from file to rule.
TEST_F(Texts, EveryFormOfScaleIsFoundByItsRule) {
  const std::map<std::string, ScaleRule> rules = {
      {"fiducial", ScaleRule::Fiducial},          {"geometry", ScaleRule::Geometry},
      {"corrected", ScaleRule::CorrectedSpacing}, {"magnification", ScaleRule::GivenMagnification},
      {"distances", ScaleRule::TableDistance},    {"pixel spacing", ScaleRule::PixelSpacingAlone},
      {"detector", ScaleRule::DetectorSpacing},   {"scanned", ScaleRule::ScannedSpacing},
      {"aspect", ScaleRule::AspectRatio},         {"none", ScaleRule::None}};
  const auto forms = ScaleForms(0.143, 1150, 1050);
  EXPECT_EQ(forms.size(), rules.size());
  for (const auto& [name, attributes] : forms) {
    const Scale scale = FindScale(MustRead(Save(MakeWith(attributes))).scale);
    EXPECT_EQ(scale.rule, rules.at(name)) << name;
    EXPECT_EQ(scale.notes, std::vector<std::string>{}) << name;
  }
}

TEST_F(Texts, OfSeveralPicturesTheFirstIsTaken) {
  PhantomDicom disk = MakeDisk(12, false);
  const std::vector<std::uint16_t> first = disk.pixels;
  for (const std::uint16_t pixel : first) disk.pixels.push_back(pixel / 2);
  disk.attributes = {{"NumberOfFrames", "2"}};
  for (const char* tool : {"dcmconv +te", "dcmcrle", "dcmcjpeg +e1", "dcmcjpeg +e1 +fs 1",
                           "dcmcjpls +el", "gdcmconv --j2k"}) {
    const Radiograph radiograph = MustRead(Convert(tool, Save(disk)));
    EXPECT_EQ(radiograph.levels, first) << tool;
    EXPECT_EQ(radiograph.frames, 2) << tool;
    EXPECT_EQ(radiograph.notes,
              std::vector<std::string>{"the file has 2 pictures; this is the first"})
        << tool;
  }
}

class DeviceFile : public ReadingFiles, public testing::WithParamInterface<DeviceKind> {};

TEST_P(DeviceFile, IsAsTheStandardHasIt) {
  PhantomDicom disk = MakeDisk(12, false);
  disk.kind = GetParam();
  QProcess check;
  check.setProcessChannelMode(QProcess::MergedChannels);
  check.start("dciodvfy", {QString::fromStdString(Save(disk))});
  ASSERT_TRUE(check.waitForFinished());
  const QByteArray said = check.readAll();
  EXPECT_FALSE(said.contains("Error") || said.contains("Warning")) << said.toStdString();
  EXPECT_TRUE(said.contains("Image")) << said.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Of, DeviceFile,
                         testing::Values(DeviceKind::ComputedRadiography, DeviceKind::DigitalXRay));

}  // namespace
