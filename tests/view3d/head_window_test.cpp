// The window of the 3D view: controls, legend, resolutions and drawings.
#include <algorithm>
#include <string>
#include <vector>

#include "tests/support/row_name.h"
#include "tests/view3d/head_fixture.h"
#include "view3d/stress_colour.h"

namespace {

const QString kCaption = "3D vizualization TELMARION";

struct ControlRow {
  std::string name;
  const char* object;
  const char* accessibleName;
};
class HeadControlsTest : public HeadWindowTest, public testing::WithParamInterface<ControlRow> {};

TEST_P(HeadControlsTest, HasNameAndAccessibleName) {
  Open();
  EXPECT_EQ(Find<QWidget>(GetParam().object)->accessibleName(), GetParam().accessibleName);
}
INSTANTIATE_TEST_SUITE_P(
    Controls, HeadControlsTest,
    testing::Values(ControlRow{"Picture", "picTest", "Femoral head"},
                    ControlRow{"SphereResolution", "Combo1", "Articular sphere"},
                    ControlRow{"AreaResolution", "Combo2", "Weight-bearing area"},
                    ControlRow{"SphereOutlines", "Check1", "Outlines of the sphere"},
                    ControlRow{"AreaOutlines", "Check2", "Outlines of the area"},
                    ControlRow{"Pole", "Check3", "Pole of the stress"},
                    ControlRow{"PoleLabel", "LabelP", "Pole of the stress"},
                    ControlRow{"Axes", "CoorPic", "Coordinate system"},
                    ControlRow{"X", "Labelx", "x"}, ControlRow{"Y", "Labely", "y"},
                    ControlRow{"Z", "Labelz", "z"}, ControlRow{"Legend", "Mierka", "Legend"},
                    ControlRow{"Progress", "ProgressBar", "Progress"},
                    ControlRow{"Save", "Command1", "Save picture"}),
    RowName());

TEST_F(HeadWindowTest, OpensWithTheLoadedAreaTowardsTheUser) {
  Open();
  EXPECT_EQ(form_->windowTitle(), kCaption);
  EXPECT_EQ(form_->objectName(), "FormGula");
  EXPECT_EQ(View().angles.first, 0.0F);
  EXPECT_EQ(View().angles.second, 0.0F);
  EXPECT_FLOAT_EQ(View().angles.third, 3.14159265F);
  EXPECT_GT(FindPole(Picture()->Box(), View()).depth, 0.0);
  EXPECT_EQ(Find<QComboBox>("Combo1")->currentText(), "");
  EXPECT_EQ(View().sphereSteps, 10);
  EXPECT_EQ(View().areaSteps, 10);
  EXPECT_EQ(Picture()->Box().ScaleMode(), ScaleUnit::Pixels);
  EXPECT_FALSE(PoleLabel()->isVisible());
  EXPECT_EQ(Timer()->interval(), 500);
  EXPECT_FALSE(Timer()->isActive());
}

TEST_F(HeadWindowTest, LegendPerBodyWeightWhenTheWeightIsNotKnown) {
  Open(head_cases::Default());
  EXPECT_EQ(Find<QLabel>("LabelScale")->text(), "Scale Pmax/Wb");
  EXPECT_EQ(Find<QLabel>("LabelTop")->text(), "7000 m^-2");
  EXPECT_EQ(Find<QLabel>("LabelMiddle")->text(), "3500 m^-2");
  EXPECT_EQ(Find<QLabel>("LabelBottom")->text(), "0 m^-2");
  EXPECT_NEAR(View().headCase.scalePeak, 42.954, 5e-4);
}

TEST_F(HeadWindowTest, LegendInMegapascalsWhenTheWeightIsKnown) {
  Open();
  EXPECT_EQ(Find<QLabel>("LabelScale")->text(), "Scale Pmax");
  EXPECT_EQ(Find<QLabel>("LabelTop")->text(), "4 MPa");
  EXPECT_EQ(Find<QLabel>("LabelMiddle")->text(), "2 MPa");
  EXPECT_EQ(Find<QLabel>("LabelBottom")->text(), "0 MPa");
  EXPECT_NEAR(View().headCase.scalePeak, 51.671, 5e-4);
}

struct ResolutionRow {
  std::string name;
  int steps;
};
class ResolutionTest : public HeadWindowTest, public testing::WithParamInterface<ResolutionRow> {};

TEST_P(ResolutionTest, EachListSetsItsOwn) {
  Open();
  const QString text = QString::fromStdString(GetParam().name);
  Choose("Combo1", text);
  EXPECT_EQ(View().sphereSteps, GetParam().steps);
  EXPECT_EQ(View().areaSteps, 10);
  Choose("Combo2", text);
  EXPECT_EQ(View().areaSteps, GetParam().steps);
  EXPECT_EQ(form_->windowTitle(), kCaption);
}
INSTANTIATE_TEST_SUITE_P(Resolutions, ResolutionTest,
                         testing::Values(ResolutionRow{"Low", 10}, ResolutionRow{"Medium", 50},
                                         ResolutionRow{"High", 70}, ResolutionRow{"Extra", 300}),
                         RowName());

TEST_F(HeadWindowTest, OutlinesFollowTheirBoxesButAreNeverDrawnAtExtra) {
  Open();
  EXPECT_EQ(CountBlack(), 0);
  Check("Check1", true);
  const int sphere = CountBlack();
  EXPECT_GT(sphere, 500);
  Check("Check2", true);
  EXPECT_GT(CountBlack(), sphere);
  Choose("Combo1", "Extra");
  Choose("Combo2", "Extra");
  EXPECT_EQ(CountBlack(), 0);
  Choose("Combo2", "Medium");
  EXPECT_GT(CountBlack(), 500);
}

// Drawn when it is loaded and again when it becomes active, the sphere has the area's last fill.
TEST_F(HeadWindowTest, TheSphereTakesTheFillThatTheAreaLeft) {
  Open();
  const QImage& image = Image();
  const int right = image.width() / 2 + int(double(View().radius) * 0.9);
  const QRgb pixel = image.pixel(right, image.height() / 2);
  EXPECT_EQ(pixel, qRgb(54, 84, 221));
}

TEST_F(HeadWindowTest, ProgressCountsTheRowsUnderItsOwnCaption) {
  Open();
  auto* bar = Find<QProgressBar>("ProgressBar");
  QList<int> values;
  QSet<QString> captions;
  QObject::connect(bar, &QProgressBar::valueChanged, form_.get(), [&](int value) {
    values.append(value);
    if (value > 0) captions.insert(form_->windowTitle());
  });
  Choose("Combo1", "Low");
  EXPECT_EQ(bar->minimum(), 0);
  EXPECT_EQ(bar->maximum(), 40);
  ASSERT_GE(values.size(), 23);
  for (int i = 0; i + 1 < values.size(); ++i) EXPECT_EQ(values[i], i + 1);
  EXPECT_EQ(values.last(), 0);
  EXPECT_EQ(captions, QSet<QString>{kCaption + " - computing"});
  EXPECT_EQ(form_->windowTitle(), kCaption);
}

// Notes what the bar shows whenever it is painted.
class PaintedValues : public QObject {
 public:
  explicit PaintedValues(QProgressBar* bar) : bar_(bar) { bar_->installEventFilter(this); }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) values_.append(bar_->value());
    return QObject::eventFilter(watched, event);
  }
  const QList<int>& Values() const { return values_; }

 private:
  QProgressBar* bar_;
  QList<int> values_;
};

TEST_F(HeadWindowTest, TheBarIsSeenToRiseWhileTheDrawingIsMade) {
  Open();
  const PaintedValues painted(Find<QProgressBar>("ProgressBar"));
  form_->CaseComputed();
  const QList<int>& values = painted.Values();
  ASSERT_GE(values.size(), 10);
  EXPECT_TRUE(std::is_sorted(values.begin(), values.end() - 1));
  EXPECT_GE(values[values.size() - 2], 20) << "up to the last rows";
  EXPECT_EQ(values.last(), 0);
}

TEST_F(HeadWindowTest, ThePoleIsMarkedOnRequest) {
  Open();
  const QImage without = Image().copy();
  Check("Check3", true);
  ASSERT_TRUE(PoleLabel()->isVisible());
  const PoleMark mark = FindPole(Picture()->Box(), View());
  const QPointF centre = QRectF(PoleLabel()->geometry()).center();
  const QPointF outer = mark.outer / Picture()->devicePixelRatioF();
  EXPECT_NEAR(centre.x(), outer.x(), 1.0);
  EXPECT_NEAR(centre.y(), outer.y(), 1.0);
  EXPECT_NE(Image(), without) << "the line";
  EXPECT_EQ(Image().pixel(mark.pole.toPoint()), qRgb(0, 0, 0));
  Check("Check3", false);
  EXPECT_FALSE(PoleLabel()->isVisible());
  EXPECT_EQ(Image(), without);
}

TEST_F(HeadWindowTest, BehindTheHeadThePoleKeepsItsLabelAsItWas) {
  Open();
  Check("Check3", true);
  poleText_ = "200";
  form_->CaseComputed();
  ASSERT_LT(FindPole(Picture()->Box(), View()).depth, 0.0);
  EXPECT_TRUE(PoleLabel()->isVisible());
  Check("Check3", false);
  EXPECT_TRUE(PoleLabel()->isVisible());
  poleText_ = "20";
  form_->CaseComputed();
  EXPECT_FALSE(PoleLabel()->isVisible());
}

TEST_F(HeadWindowTest, ShowsANewCaseWhileItIsOpen) {
  Open();
  const QImage before = Image().copy();
  record_ = head_cases::Default(0.0, 10.0);
  poleText_ = head_cases::PoleText(record_);
  form_->CaseComputed();
  EXPECT_NE(Image(), before);
  EXPECT_EQ(Find<QLabel>("LabelTop")->text(), "7000 m^-2");
  EXPECT_DOUBLE_EQ(View().headCase.edgeAngle, record_.data.inputs.thetaCE);
}

TEST_F(HeadWindowTest, ARefusedCaseLeavesTheLastComputedOne) {
  Open();
  form_->CaseComputed();
  const QImage before = Image().copy();
  CaseRecord refused = record_;
  refused.data.inputs.thetaCE = {-1.0};
  refused.data.inputs.bodyWeight.reset();
  ASSERT_NE(Vse::RunModel(refused), Sila::HipOutcome::Ok);
  record_ = refused;
  QEvent activation(QEvent::ActivationChange);
  QApplication::sendEvent(form_.get(), &activation);
  EXPECT_EQ(Image(), before);
  EXPECT_EQ(Find<QLabel>("LabelTop")->text(), "4 MPa");
}

TEST_F(HeadWindowTest, BeforeAnyComputedCaseActivationReadsTheCaseAgain) {
  Open();
  record_ = head_cases::Default(0.0, 10.0);
  QEvent activation(QEvent::ActivationChange);
  QApplication::sendEvent(form_.get(), &activation);
  EXPECT_EQ(Find<QLabel>("LabelTop")->text(), "7000 m^-2");
  EXPECT_DOUBLE_EQ(View().headCase.edgeAngle, record_.data.inputs.thetaCE);
}

TEST_F(HeadWindowTest, OpenedAgainItStartsAfresh) {
  Open();
  Choose("Combo1", "High");
  Check("Check3", true);
  Press({100, 100});
  Move({150, 130});
  Release({150, 130});
  form_->close();
  EXPECT_FALSE(Timer()->isActive());
  form_->show();
  EXPECT_EQ(Find<QComboBox>("Combo1")->currentText(), "");
  EXPECT_EQ(Find<QComboBox>("Combo1")->count(), 4);
  EXPECT_FALSE(Find<QCheckBox>("Check3")->isChecked());
  EXPECT_FALSE(PoleLabel()->isVisible());
  EXPECT_FLOAT_EQ(View().angles.third, 3.14159265F);
  EXPECT_EQ(View().angles.first, 0.0F);
}

TEST_F(HeadWindowTest, ANewSizeIsRedrawn) {
  Open();
  form_->resize(1100, 640);
  QApplication::processEvents();
  EXPECT_EQ(Picture()->Box().PixelSize(),
            (QSizeF(Picture()->size()) * Picture()->devicePixelRatioF()).toSize());
  EXPECT_EQ(View().radius, float(Image().width()) / 4.0F);
  EXPECT_NE(Image().pixel(Image().width() / 2, Image().height() / 2), Image().pixel(2, 2))
      << "the head is there";
  EXPECT_EQ(Picture()->grab().toImage().convertToFormat(QImage::Format_RGB32), Image())
      << "and is shown";
}

// Text and controls of the column; CoorPic has its labels on it.
bool IsInColumn(const QWidget& widget) {
  if (!widget.isVisible() || widget.objectName() == "CoorPic") return false;
  if (widget.objectName() == "picTest" || widget.objectName() == "LabelP") return false;
  return !widget.accessibleName().isEmpty() || qobject_cast<const QLabel*>(&widget) != nullptr;
}

TEST_F(HeadWindowTest, NothingOverlapsAtAnySize) {
  Open();
  for (const QSize& size : {QSize(1, 1), QSize(560, 700), QSize(1600, 620), QSize(1600, 1200)}) {
    form_->resize(size);
    QApplication::processEvents();
    std::vector<std::pair<std::string, QRect>> areas;
    for (const QWidget* widget : form_->findChildren<QWidget*>()) {
      if (!IsInColumn(*widget)) continue;
      const std::string name = widget->objectName().toStdString();
      const QRect area(widget->mapTo(form_.get(), QPoint(0, 0)), widget->size());
      EXPECT_TRUE(form_->rect().contains(area)) << name;
      EXPECT_GE(area.width(), widget->minimumSizeHint().width()) << name << " is clipped";
      EXPECT_GE(area.height(), widget->minimumSizeHint().height()) << name << " is clipped";
      areas.emplace_back(name, area);
    }
    EXPECT_EQ(areas.size(), 20U);
    for (std::size_t i = 0; i < areas.size(); ++i) {
      for (std::size_t j = 0; j < i; ++j) {
        EXPECT_FALSE(areas[i].second.intersects(areas[j].second))
            << areas[i].first << " over " << areas[j].first;
      }
    }
  }
}

TEST_F(HeadWindowTest, ThePolesLabelStaysInThePicture) {
  Open();
  Check("Check3", true);
  for (const QSize& size : {QSize(1, 1), QSize(1600, 620)}) {
    form_->resize(size);
    QApplication::processEvents();
    EXPECT_TRUE(Picture()->rect().contains(PoleLabel()->geometry()));
  }
}

TEST_F(HeadWindowTest, AxisLabelsAreBesideTheirAxes) {
  Open();
  Press({100, 100});
  Move({160, 140});  // the axes' ends lie apart
  const QRect axes = Find<QWidget>("CoorPic")->geometry();
  PictureBox scratch({100, 100});
  // The turn of the move; the window has gone on by π/30 since.
  ViewAngles angles = View().angles;
  angles.third -= 3.14159265F / 30.0F;
  const std::array<QPointF, 3> ends = DrawAxes(scratch, angles);
  const std::array<const char*, 3> names = {"Labelx", "Labely", "Labelz"};
  const double offset = 0.1 / 2.3;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const QPoint place = Find<QLabel>(names[i])->pos() - axes.topLeft();
    EXPECT_NEAR(place.x(), (ends[i].x() - offset) * axes.width(), 1.0) << names[i];
    EXPECT_NEAR(place.y(), (ends[i].y() + offset) * axes.width(), 1.0) << names[i];
  }
  Release({160, 140});
}

class FinestDrawingTest : public HeadWindowTest {
 protected:
  void SetUp() override {
    Open();
    Choose("Combo1", "Extra");
    Choose("Combo2", "Extra");
  }
};

// Whatever else the program has to do waits: no command ever finds half a drawing.
TEST_F(FinestDrawingTest, NothingElseRunsUntilItIsDone) {
  bool somethingRan = false;
  QTimer::singleShot(0, form_.get(), [&] { somethingRan = true; });
  form_->CaseComputed();
  EXPECT_FALSE(somethingRan);
  EXPECT_EQ(form_->windowTitle(), kCaption);
  QApplication::processEvents();
  EXPECT_TRUE(somethingRan);
}

// A layout that is interrupted by events of the window, such as the next size, ends the program.
TEST_F(FinestDrawingTest, ANewSizeIsDrawnWhenTheLayoutIsDone) {
  int steps = 0;
  QObject::connect(Find<QProgressBar>("ProgressBar"), &QProgressBar::valueChanged, form_.get(),
                   [&] { ++steps; });
  form_->resize(900, 800);
  EXPECT_EQ(steps, 0);
  QApplication::processEvents();
  EXPECT_GT(steps, 0);
}

// As while a border is dragged: the next size comes before the window has settled in the last one.
TEST_F(FinestDrawingTest, SizesThatFollowEachOtherAreDrawn) {
  for (const QSize size : {QSize(1, 1), QSize(1500, 600), QSize(600, 900), QSize(1, 1)}) {
    form_->resize(size);
    QApplication::processEvents();
  }
  EXPECT_TRUE(QTest::qWaitFor([&] {
    const bool drawn = View().radius == float(std::max(Image().width(), Image().height())) / 4.0F;
    return drawn && Picture()->grab().toImage().convertToFormat(QImage::Format_RGB32) == Image();
  }));
}

}  // namespace
