// How long the 3D view takes to draw the finest meshes and one step of a drag, beside a general
// renderer that draws the same facets in the same colours.
#include <QApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <limits>
#include <memory>

#include "bench/view3d_peer.h"
#include "platform/raster_box.h"
#include "tests/view3d/head_cases.h"
#include "view3d/head_surface.h"
#include "view3d/head_window.h"

namespace {

constexpr QSizeF kPictureSize(700, 700);
constexpr int kFinest = 300;
constexpr int kDragSteps = 5;

HeadView MakeView(int steps) {
  const CaseRecord record = head_cases::Default(70.0);
  HeadView view;
  view.angles = {0.2F, 0.0F, 2.9F};
  view.sphereSteps = view.areaSteps = steps;
  view.headCase = HeadCaseOf(record, head_cases::PoleText(record));
  return view;
}

class Drawer {
 public:
  explicit Drawer(LineStyle outlines) {
    box_.SetScaleMode(ScaleUnit::Pixels);
    box_.SetFillStyle(FillKind::Solid);
    box_.SetFillColor(0xDD5436);
    box_.SetDrawStyle(outlines);
  }
  void Draw(HeadView& view) {
    DrawSphere(box_, polygon_, view);
    DrawArea(box_, polygon_, view);
  }
  RasterBox& Box() { return box_; }

 private:
  RasterBox box_{kPictureSize};
  Polygon polygon_;
};

// Milliseconds: the best of `runs`, each after a small turn.
template <class Draw>
double BestOf(int runs, HeadView view, const Draw& draw) {
  double best = std::numeric_limits<double>::max();
  for (int i = 0; i < runs; ++i) {
    view.angles.third += 0.05F;
    const auto start = std::chrono::steady_clock::now();
    draw(view);
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    best = std::min(best, time.count());
  }
  return best;
}

double MeasureOurs(const char* what, int runs, int steps, LineStyle outlines) {
  Drawer drawer(outlines);
  const double time = BestOf(runs, MakeView(steps), [&](HeadView& view) { drawer.Draw(view); });
  std::printf("%-44s: %8.3f ms\n", what, time);
  return time;
}

// The share of pixels that both pictures colour alike.
double Likeness(const QImage& a, const QImage& b) {
  int alike = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      if ((a.pixel(x, y) & 0xFFFFFFU) == (b.pixel(x, y) & 0xFFFFFFU)) ++alike;
    }
  }
  return double(alike) / (double(a.width()) * a.height());
}

void MeasurePeer(double extra) {
  HeadView view = MakeView(kFinest);
  Drawer drawer(LineStyle::None);
  drawer.Draw(view);
  drawer.Box().SetFillColor(0xDD5436);
  drawer.Draw(view);
  const std::unique_ptr<HeadPeer> peer = MakePeer(drawer.Box(), view);
  if (!peer) {
    std::printf("VTK was not found when this was built: nothing to compare with\n");
    return;
  }
  const QImage picture = peer->Draw(0.0);
  std::printf("%-44s: %8s (%s)\n", "VTK draws with", "", qPrintable(peer->Renderer()));
  std::printf("%-44s: %8.1f %%\n", "pixels that VTK colours alike",
              100.0 * Likeness(picture, drawer.Box().Image()));
  double angle = 0.0;
  const double time = BestOf(20, view, [&](HeadView&) { peer->Draw(angle += 3.0); });
  std::printf("%-44s: %8.3f ms\n", "VTK, extra, meshes in place, turned", time);
  const double fresh =
      BestOf(10, view, [&](HeadView& turned) { MakePeer(drawer.Box(), turned)->Draw(0.0); });
  std::printf("%-44s: %8.3f ms\n", "VTK, extra, new meshes", fresh);
  std::printf("VTK takes %.2f times as long for a turned picture, %.2f times for new meshes\n",
              time / extra, fresh / extra);
}

// The whole window: progress bar, caption, pole, and the picture painted.
void MeasureWindow() {
  DialogMessageDoor messages;
  SystemFileDialog files;
  FormGula form({[&] { return MakeView(kFinest).headCase; }, messages, files, QLocale::c()});
  form.show();
  form.resize(form.size() + kPictureSize.toSize() - form.findChild<RasterView*>()->size());
  for (QComboBox* list : form.findChildren<QComboBox*>()) list->setCurrentText("Extra");
  const double time = BestOf(20, {}, [&](HeadView&) {
    form.CaseComputed();
    QApplication::processEvents();
  });
  std::printf("%-44s: %8.3f ms\n", "extra, the whole window", time);
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const double extra = MeasureOurs("extra, both surfaces", 20, kFinest, LineStyle::None);
  MeasureOurs("high with outlines, both surfaces", 20, 70, LineStyle::Solid);
  MeasureOurs("one step of a drag, both surfaces", 200, kDragSteps, LineStyle::Solid);
  MeasureWindow();
  MeasurePeer(extra);
  return 0;
}
