#include "radiograph/scale.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "radiograph/scale_values.h"

namespace Radiography {

namespace {

using std::optional;
using std::string;

// Spacings closer than this are the same one, rounded differently; no hip lies so close to the
// detector that its true magnification is smaller.
constexpr double kSameSpacing = 0.005;
// Magnifications that differ by more contradict each other.
constexpr double kSameMagnification = 0.01;

bool Differ(double a, double b, double share) {
  return std::abs(a - b) > share * std::max(a, b);
}

bool Differ(const PixelSpacing& a, const PixelSpacing& b) {
  return Differ(a.row, b.row, kSameSpacing) || Differ(a.column, b.column, kSameSpacing);
}

PixelSpacing Times(const PixelSpacing& spacing, double factor) {
  return {spacing.row * factor, spacing.column * factor};
}

string Text(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%.4g", number);
  return text;
}

Scale Found(ScaleRule rule, const char* name, const PixelSpacing& spacing) {
  Scale scale;
  scale.rule = rule;
  scale.name = name;
  scale.spacing = spacing;
  scale.aspect = spacing.row / spacing.column;
  return scale;
}

// The attributes after their checks.
struct Usable {
  optional<PixelSpacing> pixel, imager, scanned;
  optional<double> magnification, sourceToDetector, sourceToTable;
  optional<double> aspect;
  string calibrationType;
};

Usable Check(const ScaleAttributes& given, std::vector<string>& notes) {
  return {UsableSpacing("PixelSpacing", given.pixelSpacing, notes),
          UsableSpacing("ImagerPixelSpacing", given.imagerPixelSpacing, notes),
          UsableSpacing("NominalScannedPixelSpacing", given.nominalScannedPixelSpacing, notes),
          UsableFactor("EstimatedRadiographicMagnificationFactor", given.magnification, notes),
          UsableDistance("DistanceSourceToDetector", given.sourceToDetector, notes),
          UsableDistance("DistanceSourceToPatient", given.sourceToTable, notes),
          UsableRatio("PixelAspectRatio", given.pixelAspectRatio, notes),
          given.calibrationType};
}

// PixelSpacing as a spacing in the patient: what the file says of it, or that it is another one
// than the detector's.
optional<Scale> InPatient(const Usable& values, std::vector<string>& notes) {
  if (!values.pixel) return {};
  if (values.calibrationType == "FIDUCIAL") {
    return Found(ScaleRule::Fiducial, "calibrated by an object of known size", *values.pixel);
  }
  if (values.calibrationType == "GEOMETRY") {
    return Found(ScaleRule::Geometry, "calibrated by the geometry of the exposure", *values.pixel);
  }
  if (!values.calibrationType.empty()) {
    notes.push_back("PixelSpacingCalibrationType is \"" + values.calibrationType +
                    "\", which is not known, and is not used");
  }
  if (!values.imager || !Differ(*values.pixel, *values.imager)) return {};
  if (values.pixel->row > values.imager->row || values.pixel->column > values.imager->column) {
    notes.emplace_back(
        "PixelSpacing is larger than ImagerPixelSpacing, a magnification below 1, and is not used");
    return {};
  }
  return Found(ScaleRule::CorrectedSpacing, "corrected by the device, which does not say how",
               *values.pixel);
}

// The distance from the source to the table, where the file has a usable pair.
optional<double> TableMagnification(const Usable& values, std::vector<string>& notes) {
  if (!values.sourceToDetector && !values.sourceToTable) return {};
  if (!values.sourceToDetector || !values.sourceToTable) {
    notes.push_back(
        string(values.sourceToDetector ? "DistanceSourceToPatient" : "DistanceSourceToDetector") +
        " is missing, so the other distance is not used as a scale");
    return {};
  }
  if (*values.sourceToTable >= *values.sourceToDetector) {
    notes.emplace_back(
        "DistanceSourceToPatient is not below DistanceSourceToDetector; neither is used");
    return {};
  }
  return *values.sourceToDetector / *values.sourceToTable;
}

Scale AtTable(ScaleRule rule, const char* name, const PixelSpacing& spacing) {
  Scale scale = Found(rule, name, spacing);
  scale.asksHipHeight = true;
  return scale;
}

// ImagerPixelSpacing brought to the table, by the factor that the file gives or by its distances.
optional<Scale> OnTable(const Usable& values, std::vector<string>& notes) {
  if (!values.imager) return {};
  const optional<double> byDistance = TableMagnification(values, notes);
  if (values.magnification) {
    const double factor = *values.magnification;
    if (byDistance && Differ(factor, *byDistance, kSameMagnification)) {
      notes.push_back("the given magnification is " + Text(factor) +
                      ", but the given distances make it " + Text(*byDistance));
    }
    Scale scale =
        AtTable(ScaleRule::GivenMagnification,
                "detector spacing ÷ given magnification, right at the table, not at the hip",
                Times(*values.imager, 1.0 / factor));
    if (byDistance) scale.sourceToTable = values.sourceToTable;
    if (!scale.sourceToTable && values.sourceToDetector && !values.sourceToTable) {
      scale.sourceToTable = *values.sourceToDetector / factor;
    }
    return scale;
  }
  if (!byDistance) return {};
  Scale scale = AtTable(ScaleRule::TableDistance,
                        "detector spacing × source to table ÷ source to detector, right at the "
                        "table, not at the hip",
                        Times(*values.imager, 1.0 / *byDistance));
  scale.sourceToTable = values.sourceToTable;
  return scale;
}

Scale Magnified(ScaleRule rule, const char* name, const PixelSpacing& spacing) {
  Scale scale = Found(rule, name, spacing);
  scale.asksMagnification = true;
  return scale;
}

// A spacing that is not that of the hip.
optional<Scale> Uncorrected(const Usable& values, std::vector<string>& notes) {
  if (values.magnification && !values.imager) {
    notes.emplace_back(
        "EstimatedRadiographicMagnificationFactor is not used: there is no ImagerPixelSpacing that "
        "it belongs to");
  }
  if (values.pixel && !values.imager) {
    return Magnified(ScaleRule::PixelSpacingAlone, "pixel spacing of an unknown plane",
                     *values.pixel);
  }
  if (values.imager) {
    return Magnified(ScaleRule::DetectorSpacing, "pixel spacing at the detector", *values.imager);
  }
  if (!values.scanned) return {};
  return Magnified(ScaleRule::ScannedSpacing, "pixel spacing on the scanned film", *values.scanned);
}

Scale AnglesOnly(const Usable& values) {
  Scale scale;
  scale.rule = values.aspect ? ScaleRule::AspectRatio : ScaleRule::None;
  scale.name = values.aspect ? "shape of the pixels only: angles, no lengths"
                             : "not known: angles, no lengths";
  scale.aspect = values.aspect.value_or(1.0);
  return scale;
}

Scale FirstUsable(const Usable& values, std::vector<string>& notes) {
  for (const auto& rule : {InPatient, OnTable, Uncorrected}) {
    if (const auto scale = rule(values, notes)) return *scale;
  }
  return AnglesOnly(values);
}

void NoteCalibrationAtDetector(const Usable& values, Scale& scale) {
  const bool calibrated = scale.rule == ScaleRule::Fiducial || scale.rule == ScaleRule::Geometry;
  if (!calibrated || !values.imager) return;
  if (Differ(*values.pixel, *values.imager) && values.pixel->row < values.imager->row) return;
  scale.notes.emplace_back(
      "PixelSpacing is called calibrated, but is not below that of the detector: the hip would not "
      "be magnified");
}

}  // namespace

Scale FindScale(const ScaleAttributes& attributes) {
  std::vector<string> notes;
  const Usable values = Check(attributes, notes);
  Scale scale = FirstUsable(values, notes);
  scale.notes = std::move(notes);
  NoteCalibrationAtDetector(values, scale);
  return scale;
}

optional<Scale> WithMagnification(const Scale& scale, double magnification) {
  if (!scale.asksMagnification || !scale.spacing) return {};
  if (!std::isfinite(magnification) || magnification < 1.0) return {};
  Scale corrected = scale;
  corrected.spacing = Times(*scale.spacing, 1.0 / magnification);
  corrected.asksMagnification = false;
  corrected.name += " ÷ the magnification given by the user";
  return corrected;
}

optional<Scale> WithHipHeight(const Scale& scale, double height, optional<double> sourceToTable) {
  const optional<double> distance = scale.sourceToTable ? scale.sourceToTable : sourceToTable;
  if (!scale.asksHipHeight || !scale.spacing || !distance) return {};
  if (!std::isfinite(*distance) || !(height >= 0.0 && height < *distance)) return {};
  Scale corrected = scale;
  corrected.spacing = Times(*scale.spacing, (*distance - height) / *distance);
  corrected.asksHipHeight = false;
  corrected.name += ", brought to the given height of the hip";
  return corrected;
}

}  // namespace Radiography
