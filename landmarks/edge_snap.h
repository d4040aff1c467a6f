// From a rough circle to the edge of the femoral head, by the picture itself.
#pragma once

#include <optional>
#include <vector>

#include "landmarks/circle_fit.h"
#include "landmarks/grey_view.h"
#include "landmarks/point.h"

namespace Landmarks {

// Why there is no circle.
enum class SnapDoubt {
  None,
  NoStart,     // the rough circle is not one, or has under a dozen pixels in its radius
  NoEdge,      // nothing there that gets darker outward, or no more than the picture's noise does
  OtherRound,  // two different circles fit about equally well
  TooLittle,   // the edge is seen on too little of the outline
  TooFar,      // the edge is at the end of what is searched: start nearer
};

struct Snap {
  std::optional<CircleFit> fit;  // only without doubt
  std::vector<Point> edge;       // the points it was fitted to
  double seen = 0.0;             // part of the outline on which the edge was found, 0 to 1
  double clearness = 0.0;        // slope at the edge over what noise alone would give
  SnapDoubt doubt = SnapDoubt::NoStart;
};

// The edge is searched as far as 0.3 of the rough circle's radius around its centre and for radii
// within 0.25 of it. Bone must be bright. Where the head's outline cannot be seen, behind the neck
// or the socket's rim, the circle bridges it. It is whatever is round, bright and of that size: a
// marker ball as well as a head.
//
// A ball's shadow begins like a square root, so that once smoothed it is steepest inside its edge,
// by an amount that the smoothing decides; edge points are moved outward by this. What the picture
// itself is blurred is not known here, and adds little: 0.3 mm moves the edge of a head inward by
// 0.06 mm.
//
// The fit's uncertainty is that of the points' scatter. What neighbouring points share, as where
// the neck begins, comes on top and is larger: on made-up radiographs up to 0.15 mm.
Snap SnapToEdge(const GreyView& view, const Circle& rough);

}  // namespace Landmarks
