// A phantom as the file of its detector, and the draft of a perfect reader: every mark where the
// phantom has it.
#pragma once

#include <cmath>
#include <numbers>
#include <string>

#include "measuring/draft.h"
#include "radiograph/radiograph.h"
#include "tests/support/phantom.h"
#include "tests/support/phantom_dicom.h"

// So many points, equally spaced on the whole edge.
inline std::vector<Landmarks::PixelPlace> EdgePoints(const Landmarks::Circle& circle,
                                                     const Landmarks::PixelSpacing& spacing,
                                                     int count = 8) {
  std::vector<Landmarks::PixelPlace> places;
  for (int i = 0; i < count; ++i) {
    const double angle = 2.0 * std::numbers::pi * i / count;
    const Landmarks::Point on =
        circle.centre + circle.radius * Landmarks::Point{std::cos(angle), std::sin(angle)};
    places.push_back(Landmarks::InPixels(on, spacing));
  }
  return places;
}

// Of the patient's left hip. Neither scale nor side nor numbers.
inline Measuring::Draft DraftOf(const Phantom::Truth& truth,
                                const Landmarks::PixelSpacing& spacing) {
  using Measuring::MarkKind;
  const auto place = [&](const std::optional<Landmarks::Point>& point) {
    return std::vector{Landmarks::InPixels(*point, spacing)};
  };
  Measuring::Draft draft;
  draft[MarkKind::Head] = EdgePoints(*truth.left.head, spacing);
  draft[MarkKind::OtherHead] = EdgePoints(*truth.right.head, spacing);
  draft[MarkKind::SocketEdge] = place(truth.left.socketEdge);
  draft[MarkKind::CrestTop] = place(truth.left.crestTop);
  draft[MarkKind::CrestLateral] = place(truth.left.crestLateral);
  draft[MarkKind::Trochanter] = place(truth.left.trochanter);
  return draft;
}

// What a detector says of such a picture: its pixels, not the magnification.
inline Radiography::Radiograph DetectorFile(const Phantom::Setup& setup) {
  Radiography::Radiograph file;
  file.width = setup.width;
  file.height = setup.height;
  file.bits = 12;
  file.rowDirection = "L";
  file.columnDirection = "F";
  file.scale.imagerPixelSpacing = {setup.spacing.row, setup.spacing.column};
  return file;
}

// The same written out, with the patient.
inline PhantomDicom FileOf(const Phantom::Picture& picture) {
  PhantomDicom file;
  file.kind = DeviceKind::ComputedRadiography;
  file.rows = picture.height;
  file.columns = picture.width;
  file.pixels = picture.grey;
  const std::string row = std::to_string(picture.spacing.row);
  file.attributes = {{"ImagerPixelSpacing", row + '\\' + std::to_string(picture.spacing.column)},
                     {"PixelSpacing", ""},
                     {"PatientOrientation", "L\\F"},
                     {"PatientName", "Doe^Jane"},
                     {"PatientSex", "F"},
                     {"PatientBirthDate", "19561115"}};
  return file;
}
