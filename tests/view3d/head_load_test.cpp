// What loading and activation set, before anybody touches the window.
#include <array>
#include <cmath>
#include <numbers>

#include "tests/view3d/head_fixture.h"
#include "view3d/stress_colour.h"

namespace {

TEST_F(HeadWindowTest, BothListsOfferTheResolutionsFromCoarseToFine) {
  Open();
  for (const char* name : {"Combo1", "Combo2"}) {
    const auto* list = Find<QComboBox>(name);
    QStringList entries;
    for (int i = 0; i < list->count(); ++i) entries << list->itemText(i);
    EXPECT_EQ(entries, QStringList({"Low", "Medium", "High", "Extra"})) << name;
    EXPECT_EQ(list->currentIndex(), -1) << name;
  }
}

TEST_F(HeadWindowTest, EveryControlShowsItsCaption) {
  Open();
  QStringList labels;
  for (const QLabel* label : form_->findChildren<QLabel*>()) {
    if (label->isVisible()) labels << label->text();
  }
  labels.sort();
  EXPECT_EQ(labels, QStringList({"0 MPa", "2 MPa", "4 MPa", "Articular sphere", "Coordinate system",
                                 "Progress", "Resolution", "Scale Pmax", "Weight-bearing area", "x",
                                 "y", "z"}));
  EXPECT_EQ(PoleLabel()->text(), "Pole of the stress");
  for (const auto& [name, text] :
       {std::pair("Check1", "Outlines of the sphere"), std::pair("Check2", "Outlines of the area"),
        std::pair("Check3", "Pole of the stress"), std::pair("Command1", "Save picture")}) {
    EXPECT_EQ(Find<QAbstractButton>(name)->text(), text);
    EXPECT_TRUE(Find<QAbstractButton>(name)->isVisible()) << text;
  }
  for (const auto& [name, text] : {std::pair("Labelx", "x"), std::pair("Labely", "y"),
                                   std::pair("Labelz", "z"), std::pair("LabelTop", "4 MPa")}) {
    EXPECT_EQ(Find<QLabel>(name)->text(), text);
  }
}

Colour ColourOf(QRgb pixel) {
  return Colour(qRed(pixel)) | Colour(qGreen(pixel)) << 8U | Colour(qBlue(pixel)) << 16U;
}

TEST_F(HeadWindowTest, TheLegendIsThereWhenTheWindowOpens) {
  Open();
  const QImage legend = Find<PictureView>("Mierka")->grab().toImage();
  const int x = legend.width() / 2;
  for (int band = 0; band < 10; ++band) {
    const int y = legend.height() - 1 - (2 * band + 1) * legend.height() / 20;
    EXPECT_EQ(ColourOf(legend.pixel(x, y)), StressColour(10.0 * band)) << band;
  }
}

// The first drawing is looked at while its area is still being worked out, the sphere's dozen of
// rows being past: afterwards the fill is that of the area.
TEST_F(HeadWindowTest, TheSphereIsFilledFromTheFirstDrawingOn) {
  record_ = head_cases::Default(70.0);
  form_ = std::make_unique<FormGula>(HeadWindowNeeds{[this] { return HeadCaseOf(record_, "16"); },
                                                     messages_, files_, QLocale::c()});
  form_->resize(700, 600);
  Picture()->Box().SetFillStyle(FillKind::Transparent);
  QImage sphere;
  QObject::connect(Find<QProgressBar>("ProgressBar"), &QProgressBar::valueChanged, form_.get(),
                   [&](int row) {
                     if (row == 14 && sphere.isNull()) sphere = Image().copy();
                   });
  form_->show();
  EXPECT_EQ(Picture()->cursor().shape(), Qt::OpenHandCursor);
  QApplication::processEvents();
  ASSERT_FALSE(sphere.isNull());
  const QPoint middle = sphere.rect().center();
  const int off = int(double(View().radius) * 0.6);
  EXPECT_NE(sphere.pixel(middle), sphere.pixel(2, 2));
  for (const QPoint way : {QPoint(off, off), QPoint(-off, off), QPoint(0, -off)}) {
    EXPECT_EQ(sphere.pixel(middle + way), sphere.pixel(middle));
  }
}

TEST_F(HeadWindowTest, NothingOfTheAreaIsLeftOutOnceTheWindowIsActive) {
  constexpr std::array<float, 3> kNothing{};
  Open();
  EXPECT_EQ(View().exclusionBounds, kNothing);
  const QImage whole = Image().copy();
  // Nothing in the program sets the bounds.
  const_cast<HeadView&>(View()).exclusionBounds = {-1.0F, 1.0F, 1.0F};
  form_->CaseComputed();
  ASSERT_NE(Image(), whole);
  QEvent activation(QEvent::ActivationChange);
  QApplication::sendEvent(form_.get(), &activation);
  EXPECT_EQ(View().exclusionBounds, kNothing);
  EXPECT_EQ(Image(), whole);
}

// On the rim of the head, a hundredth of a pixel decides.
TEST_F(HeadWindowTest, ThePoleIsMarkedDownToAHundredthOfAPixelBehindTheRim) {
  Open();
  for (const auto& [depth, marked] : {std::pair(-0.009, true), std::pair(-0.011, false)}) {
    const double behind = std::asin(-depth / double(View().radius)) * 180.0 / std::numbers::pi;
    poleText_ = QString::number(90.0 + behind, 'f', 9);
    form_->CaseComputed();
    ASSERT_NEAR(FindPole(Picture()->Box(), View()).depth, depth, 2e-4);
    const QImage without = Image().copy();
    Check("Check3", true);
    EXPECT_EQ(PoleLabel()->isVisible(), marked) << depth;
    EXPECT_EQ(Image() != without, marked) << depth;
    Check("Check3", false);
  }
}

}  // namespace
