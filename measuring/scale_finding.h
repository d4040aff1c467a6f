// From pixels to true lengths: what the file says, what the user adds, and an object of known size.
#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>
#include <array>
#include <optional>

#include "landmarks/picture_scale.h"
#include "landmarks/side.h"
#include "measuring/draft.h"
#include "measuring/error_entries.h"
#include "radiograph/radiograph.h"

namespace Measuring {

// What the file says that measuring needs. It does not change while the picture is shown.
struct PictureFacts {
  Radiography::Scale scale;
  Landmarks::Orientation orientation;
  QStringList notes;  // what the user should know of the reading

  // Millimetres from pixel to pixel on the picture; where they are not known, of the right ratio.
  Landmarks::PixelSpacing Spacing() const;
};
PictureFacts FactsOf(const Radiography::Radiograph& radiograph);

struct ScaleFinding {
  QString name;   // where it comes from
  QString value;  // what a pixel is at the hip; empty while that is not known
  // What lengths on the picture are divided by. Without it there are no lengths, only angles.
  std::optional<Landmarks::Magnification> magnification;
  bool isByObject = false;  // so that its marks say how uncertain it is, not the user
  QString todo;             // what is still asked for
  QStringList notes;        // what the file's attributes contradict, and the like
  std::array<bool, kEntryCount> asks = {};  // which entries it depends on
};

// An object of known size that is marked and whose size is entered goes before what the file says.
ScaleFinding SettleScale(const PictureFacts& facts, const Draft& draft, const CheckedErrors& errors,
                         const QLocale& locale);

// The places in mm on the picture.
std::vector<Landmarks::Point> OnPicture(const std::vector<Landmarks::PixelPlace>& places,
                                        const Landmarks::PixelSpacing& spacing);

// A standard uncertainty in pixels, in mm on the picture.
double InMillimetres(double pixels, const Landmarks::PixelSpacing& spacing);

}  // namespace Measuring
