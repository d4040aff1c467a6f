// Where measurements and results appear in the case file, in windows and on paper: one row each.
// The form has its own table in caseform/case_form_controls.cpp.
#pragma once

#include <QStringView>
#include <array>
#include <optional>

#include "model/vocabulary.h"

namespace Vse {

struct MeasurementPlaces {
  Sila::Measurement id = Sila::Measurement::Lizm;
  QStringView fileLabel;   // 16 characters
  QStringView printLabel;  // on the report
};

inline constexpr std::array kMeasurementPlaces = {
    MeasurementPlaces{Sila::Measurement::Lizm, u"lizm          = ", u"lizm"},
    MeasurementPlaces{Sila::Measurement::Xizm, u"xizm          = ", u"xizm"},
    MeasurementPlaces{Sila::Measurement::Zizm, u"zizm          = ", u"zizm"},
    MeasurementPlaces{Sila::Measurement::Cizm, u"Cizm          = ", u"Cizm"},
    MeasurementPlaces{Sila::Measurement::Hizm, u"Hizm          = ", u"Hizm"},
    MeasurementPlaces{Sila::Measurement::Zasuk, u"zasuk         = ", u"zasuk"},
    MeasurementPlaces{Sila::Measurement::ThetaCE, u"theta-CE      = ", u"Theta-CE"},
    MeasurementPlaces{Sila::Measurement::HeadRadius, u"radius of head= ", u"Radius of head"}};
static_assert(Sila::StandAtTheirIds(kMeasurementPlaces) &&
              kMeasurementPlaces.size() == Sila::kRadiographCount);

// Beside a measurement in windows other than the form.
struct WindowCaption {
  Sila::Measurement id = Sila::Measurement::Lizm;
  QStringView text;
};
inline constexpr std::array kWindowCaptions = {
    WindowCaption{Sila::Measurement::Lizm, u"l/2"},
    WindowCaption{Sila::Measurement::Xizm, u"x trochanter"},
    WindowCaption{Sila::Measurement::Zizm, u"z trochanter"},
    WindowCaption{Sila::Measurement::Cizm, u"C"},
    WindowCaption{Sila::Measurement::Hizm, u"H"},
    WindowCaption{Sila::Measurement::Zasuk, u"Rotation angle"},
    WindowCaption{Sila::Measurement::ThetaCE, u"CE"},
    WindowCaption{Sila::Measurement::HeadRadius, u"Radius of head"},
    WindowCaption{Sila::Measurement::BodyWeight, u"Body weight"}};
static_assert(Sila::StandAtTheirIds(kWindowCaptions) &&
              kWindowCaptions.size() == Sila::kMeasurementCount);

// Behind a value in the case file and on the report. An angle's last blank stays with a value that
// is read back.
constexpr QStringView FileSuffix(Sila::Kind kind) {
  switch (kind) {
    case Sila::Kind::Length:
      return u" cm";
    case Sila::Kind::Angle:
      return u" °  ";
    case Sila::Kind::Radius:
      return u" m ";
    case Sila::Kind::Weight:
      break;
  }
  return u" kg";
}

struct ResultPlaces {
  Sila::Result id = Sila::Result::RWb;
  QStringView printLabel;  // on the report, with everything before the value
  QStringView fileLabel;   // empty: not in the file
  QStringView fileSuffix;
  std::optional<int> fileDecimals = {};  // truncated to them; empty: as held
};

// The last label is not padded to the others' width, and "Pmax =" is followed by two blanks on
// paper. Deliberate.
inline constexpr std::array kResultPlaces = {
    ResultPlaces{Sila::Result::RWb, u"R/Wb = ", u"R/Wb          = ", u"", 3},
    ResultPlaces{Sila::Result::ThetaR, u"Theta-R = ", u"Theta-R       = ", u" ° ", 3},
    ResultPlaces{Sila::Result::ThetaPol, u"Theta-pol = ", u"", u""},
    ResultPlaces{Sila::Result::PmaxWb, u"Pmax/Wb = ", u"Pmax/Wb       = ", u" m^-2", 3},
    ResultPlaces{Sila::Result::Pmax, u"Pmax =  ", u"Pmax = ", u" Pa"}};
static_assert(Sila::StandAtTheirIds(kResultPlaces) && kResultPlaces.size() == Sila::kResultCount);

}  // namespace Vse
