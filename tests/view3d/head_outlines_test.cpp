// Outlines of the sphere and of the area, each by its own box, and what is beside the picture.
#include <QCursor>
#include <QGuiApplication>
#include <QSet>
#include <string>

#include "tests/support/row_name.h"
#include "tests/view3d/head_fixture.h"

namespace {

struct OutlineRow {
  std::string name;
  bool sphere;
  bool area;
};

class OutlineTest : public HeadWindowTest, public testing::WithParamInterface<OutlineRow> {
 protected:
  // The picture as the drawing routines make it with these outlines.
  QImage Drawn(LineStyle sphere, LineStyle area) {
    const RasterBox& shown = Picture()->Box();
    RasterBox picture(shown.Size(), shown.PixelRatio());
    picture.SetScaleMode(ScaleUnit::Pixels);
    picture.SetBackColor(shown.BackColor());
    picture.SetFillStyle(FillKind::Solid);
    picture.SetFillColor(shown.FillColor());
    HeadView view = View();
    Polygon polygon;
    picture.SetDrawStyle(sphere);
    DrawSphere(picture, polygon, view);
    picture.SetDrawStyle(area);
    DrawArea(picture, polygon, view);
    DrawPole(picture, FindPole(picture, view));
    return picture.Image().copy();
  }
  QSet<QString> VisibleTexts() {
    QSet<QString> texts;
    for (const QLabel* label : form_->findChildren<QLabel*>()) {
      if (label->isVisible()) texts += label->text();
    }
    return texts;
  }
};

TEST_P(OutlineTest, AreThoseOfTheBoxesAndTheCaptionsStay) {
  Open();
  Choose("Combo1", "Medium");
  Choose("Combo2", "Medium");
  Check("Check1", GetParam().sphere);
  Check("Check2", GetParam().area);
  Check("Check3", true);
  const auto outlines = [](bool on) { return on ? LineStyle::Solid : LineStyle::None; };
  EXPECT_EQ(Image(), Drawn(outlines(GetParam().sphere), outlines(GetParam().area)));
  EXPECT_EQ(VisibleTexts(),
            (QSet<QString>{"Resolution", "Articular sphere", "Weight-bearing area",
                           "Coordinate system", "x", "y", "z", "Scale Pmax", "4 MPa", "2 MPa",
                           "0 MPa", "Progress", "Pole of the stress"}));
}

INSTANTIATE_TEST_SUITE_P(Rows, OutlineTest,
                         testing::Values(OutlineRow{"None", false, false},
                                         OutlineRow{"SphereAlone", true, false},
                                         OutlineRow{"AreaAlone", false, true},
                                         OutlineRow{"Both", true, true}),
                         RowName());

// The bar and the caption show a long drawing; the pointer stays the one that turns the head.
TEST_F(HeadWindowTest, KeepsItsPointerThroughTheLongestDrawing) {
  Open();
  int looks = 0;
  QObject::connect(Find<QProgressBar>("ProgressBar"), &QProgressBar::valueChanged, form_.get(),
                   [&] {
                     ++looks;
                     EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
                     EXPECT_EQ(Picture()->cursor().shape(), Qt::OpenHandCursor);
                   });
  Choose("Combo1", "Extra");
  Choose("Combo2", "Extra");
  EXPECT_GT(looks, 600);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_EQ(Picture()->cursor().shape(), Qt::OpenHandCursor);
}

}  // namespace
