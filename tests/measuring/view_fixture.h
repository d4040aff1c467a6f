// A radiograph in its view, driven by real events, and what it answers kept as a window would.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <memory>
#include <optional>
#include <vector>

#include "measuring/radiograph_view.h"

// Marks a picture as the window around the view does: what is asked for is done and shown.
class MarkedView : public Measuring::RadiographView {
 public:
  MarkedView() {
    using Measuring::MarkKind;
    connect(this, &RadiographView::PointAdded, this,
            [this](MarkKind kind, Landmarks::PixelPlace place) {
              points[Measuring::IndexOf(kind)].push_back(place);
              ShowMarks(points, circles);
            });
    connect(this, &RadiographView::PointMoved, this,
            [this](MarkKind kind, std::size_t index, Landmarks::PixelPlace place, bool) {
              points[Measuring::IndexOf(kind)][index] = place;
              ShowMarks(points, circles);
            });
    connect(this, &RadiographView::PointRemoved, this, [this](MarkKind kind, std::size_t index) {
      auto& places = points[Measuring::IndexOf(kind)];
      places.erase(places.begin() + std::ptrdiff_t(index));
      ShowMarks(points, circles);
    });
  }
  const std::vector<Landmarks::PixelPlace>& PointsOf(Measuring::MarkKind kind) const {
    return points[Measuring::IndexOf(kind)];
  }

  Measuring::MarkPoints points;
  Measuring::CirclesOnPicture circles;
};

// Levels from `level` at column and row.
template <class Level>
std::shared_ptr<Radiography::Radiograph> MakeRadiograph(int width, int height, Level level) {
  auto radiograph = std::make_shared<Radiography::Radiograph>();
  radiograph->width = width;
  radiograph->height = height;
  radiograph->bits = 12;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      radiograph->levels.push_back(static_cast<std::uint16_t>(level(x, y)));
    }
  }
  return radiograph;
}
