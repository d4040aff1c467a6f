// What a radiograph's file says of its scale, and which of it is believed.
//
// Lengths are in mm. A spacing is the distance between neighbouring pixels: `row` from one row to
// the next (down the picture), `column` from one column to the next (across it). They may differ,
// so all geometry is done in mm on the picture, never in pixels.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "radiograph/pixel_spacing.h"

namespace Radiography {

// As the file has them: no value where the attribute is missing or empty, NaN for a text that is no
// number. Nothing is checked yet.
struct ScaleAttributes {
  std::vector<double> pixelSpacing;                // mm, row then column
  std::vector<double> imagerPixelSpacing;          // mm, row then column
  std::vector<double> nominalScannedPixelSpacing;  // mm, row then column
  std::string calibrationType;                     // of PixelSpacing: FIDUCIAL, GEOMETRY or empty
  std::vector<double> magnification;               // estimated, source-detector ÷ source-table
  std::vector<double> sourceToDetector;            // mm
  std::vector<double> sourceToTable;               // mm
  std::vector<double> pixelAspectRatio;            // height, then width of a pixel

  bool operator==(const ScaleAttributes&) const = default;
};

// In the order in which they are tried.
enum class ScaleRule {
  Fiducial,            // PixelSpacing, from an object of known size
  Geometry,            // PixelSpacing, from the distances of source, table and detector
  CorrectedSpacing,    // PixelSpacing that differs from ImagerPixelSpacing
  GivenMagnification,  // ImagerPixelSpacing ÷ EstimatedRadiographicMagnificationFactor
  TableDistance,       // ImagerPixelSpacing × source-table ÷ source-detector
  PixelSpacingAlone,   // of an unknown plane
  DetectorSpacing,     // ImagerPixelSpacing: at the detector
  ScannedSpacing,      // NominalScannedPixelSpacing: on the film that was scanned
  AspectRatio,         // the shape of a pixel, not its size
  None,
};

struct Scale {
  ScaleRule rule = ScaleRule::None;
  std::string name;                     // of the rule, for the user
  std::optional<PixelSpacing> spacing;  // without it only angles can be measured
  // Height of a pixel ÷ its width: what angles need where lengths are not known.
  double aspect = 1.0;
  // The spacing is that of the detector, of a film or of an unknown plane: lengths are too large by
  // a magnification that the user has to give.
  bool asksMagnification = false;
  // The spacing is right at the table; the hip lies some way above it, towards the source.
  bool asksHipHeight = false;
  std::optional<double> sourceToTable;  // mm, where the file has it or it follows
  std::vector<std::string> notes;       // what was not used and why, what contradicts itself
};

// The first rule whose values can be used. What an object of known size on the picture says goes
// before all of them and is no matter of the file.
Scale FindScale(const ScaleAttributes& attributes);

// The spacing in the plane of the hip, where the picture is magnified `magnification` times.
// Nothing when no magnification is asked for (it would be divided out twice) or it is below 1.
std::optional<Scale> WithMagnification(const Scale& scale, double magnification);

// The spacing in the plane of the hip, `height` mm above the table. With the source at the distance
// d from the table the spacing at the table is that at the detector × d ÷ SID, so at the hip it is
// smaller by (d - height) ÷ d. `sourceToTable` in mm is used where the file does not give it.
// Nothing when no height is asked for, the distance is not known, or the height is not from 0 to
// below it.
std::optional<Scale> WithHipHeight(const Scale& scale, double height,
                                   std::optional<double> sourceToTable = {});

}  // namespace Radiography
