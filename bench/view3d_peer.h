// The head drawn by VTK, a general renderer, for comparison.
#pragma once

#include <QImage>
#include <QString>
#include <memory>

#include "platform/raster_box.h"
#include "view3d/head_surface.h"

class HeadPeer {
 public:
  HeadPeer() = default;
  HeadPeer(const HeadPeer&) = delete;
  HeadPeer& operator=(const HeadPeer&) = delete;
  virtual ~HeadPeer() = default;

  // The picture with the head turned by `degrees` about the vertical, off-screen, read back.
  virtual QImage Draw(double degrees) = 0;
  virtual QString Renderer() const = 0;  // what draws below VTK
};

// The facets and colours of the view, as they lie in `picture`. Null when built without VTK.
std::unique_ptr<HeadPeer> MakePeer(const RasterBox& picture, const HeadView& view);
