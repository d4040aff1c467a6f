// Stands in where VTK is not installed.
#include "bench/view3d_peer.h"

std::unique_ptr<HeadPeer> MakePeer(const RasterBox&, const HeadView&) {
  return nullptr;
}
