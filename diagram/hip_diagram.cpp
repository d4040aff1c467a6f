// Drawing of the hip stress diagram.
#include "diagram/hip_diagram.h"

#include <QPointF>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

using Vizual::DiagramLabels;
using Vizual::Side;
using Vizual::Target;
using Vizual::ToDiagramRadians;

constexpr double kDiagramPi = 3.14;                        // deliberate: the diagram's own π
constexpr double kVertical = std::numbers::pi / 2.0;       // of an arc; upright is truly upright
constexpr double kStep = 5.0 * kDiagramPi / 180.0;         // between stress strokes
constexpr double kHeadStroke = 22.5 * kDiagramPi / 180.0;  // arrowhead's stroke against the shaft

// Drawing units.
constexpr double kScaleWidth = 7500.0;
constexpr double kScaleHeight = 5000.0;
constexpr double kRightMargin = 2500.0;  // kept for the legends
constexpr double kLegendX = 5700.0;
constexpr double kStressLegendY = 250.0;
constexpr double kForceLegendY = 2325.0;
constexpr double kPrintedLegendX = 5800.0;

// Points, on paper.
constexpr int kLegendFontSize = 10;
constexpr int kAngleFontSize = 7;
constexpr int kSideFontSize = 15;

// The runs of blanks are part of the captions.
constexpr QStringView kStressPerWeight = u"Pmax/Wb     1000 m^-2";
constexpr QStringView kStressAbsolute = u"Pmax           1 MPa";
constexpr QStringView kForcePerWeight = u"R/Wb           1 ";
constexpr QStringView kForceAbsolute = u"R              1 kN";

// One drawing. Angles are held in radians, counted from the upright towards the socket's edge, so
// that the two forms differ in one sign.
class HipDrawing {
 public:
  HipDrawing(Side side, const Target& target, double offsetX, double offsetY)
      : side_(side), target_(target), picture_(target.Picture()), labels_(target.Labels()) {
    offset_ = {offsetX, offsetY};
  }

  void Draw(double stressScale, double headSize, double& edgeAngle, double& poleAngle,
            double& forceAngle, double forceScale) {
    if (!target_.IsPrinter()) PrepareBox();
    SetCaptions();
    SetScale();
    SetGeometry(headSize);
    edge_ = edgeAngle = ToDiagramRadians(edgeAngle);
    pole_ = poleAngle = ToDiagramRadians(poleAngle);
    force_ = forceAngle = ToDiagramRadians(forceAngle);
    picture_.Circle(centre_, radius_, kBlack);
    DrawStressFan();
    DrawStressLegend(stressScale);
    DrawForceArrow(forceScale);
    DrawForceLegend();
    DrawReferenceLines();
    DrawEdgeAngle();
    DrawForceAngle();
    if (target_.IsPrinter()) PrintSide();
  }

 private:
  bool IsPaperD() const { return target_.IsPrinter() && side_ == Side::D; }
  bool IsScreenL() const { return !target_.IsPrinter() && side_ == Side::L; }

  // At this distance from the centre, `angle` from the upright towards the socket's edge.
  QPointF At(double distance, double angle) const {
    const double towardsEdge = side_ == Side::L ? -1.0 : 1.0;
    return {centre_.x() + towardsEdge * distance * std::sin(angle),
            centre_.y() - distance * std::cos(angle)};
  }
  // A length given as a part of the picture's height.
  double Height(double divisor) const { return picture_.ScaleHeight() / divisor; }
  double LineLength() const { return Height(1.3); }

  void PrepareBox() {
    if (side_ == Side::L) picture_.SetAutoRedraw(false);
    picture_.SetBackColor(kButtonFace);
    picture_.Cls();
    if (side_ == Side::L) picture_.SetAutoRedraw(true);
    for (PictureLabel* label :
         {&labels_.stressLegend, &labels_.forceLegend, &labels_.edgeAngle, &labels_.forceAngle}) {
      label->backColor = kButtonFace;  // white if they have been printed
    }
  }

  void SetCaptions() {
    const bool absolute = labels_.absoluteStress;
    labels_.stressLegend.caption = (absolute ? kStressAbsolute : kStressPerWeight).toString();
    labels_.forceLegend.caption = (absolute ? kForceAbsolute : kForcePerWeight).toString();
  }

  void SetScale() {
    picture_.SetScaleMode(ScaleUnit::Points);
    picture_.SetScaleWidth(kScaleWidth);
    picture_.SetScaleHeight(kScaleHeight);
  }

  void SetGeometry(double headSize) {
    radius_ = picture_.ScaleHeight() * headSize / 7.0 / 25.0;
    const auto x = static_cast<float>((picture_.ScaleWidth() - kRightMargin) / 2.0);
    const double lift = target_.IsPrinter() ? Height(4.5) : Height(4.7);
    centre_ = {static_cast<double>(x), picture_.ScaleHeight() - lift};
  }

  void DrawStressFan() {
    if (edge_ <= pole_) {
      DrawFanFromEdge();
    } else {
      DrawFanFromPole();
    }
  }

  // The pole lies at or beyond the edge: the stroke at the edge is the longest.
  void DrawFanFromEdge() {
    const double first = pole_ - edge_;
    double phi = first;
    while (std::cos(phi) >= 0.0) {
      DrawStressStroke(phi, std::cos(phi) / std::cos(first));
      phi += kStep;
    }
  }

  // Deliberate: both sweeps draw the stroke at the pole, and the last stroke before the edge need
  // not lie on it.
  void DrawFanFromPole() {
    double phi = 0.0;
    while (std::cos(phi) >= 0.0) {
      DrawStressStroke(phi, std::cos(phi));
      phi += kStep;
    }
    phi = 0.0;
    do {
      DrawStressStroke(phi, std::cos(phi));
      phi -= kStep;
    } while (std::cos(phi) >= 0.0 && pole_ - phi <= edge_);
  }

  // The stroke at `phi` from the pole towards the middle of the body. Its length does not depend on
  // the size of the stress.
  void DrawStressStroke(double phi, double part) {
    const double inner = 1.1 * radius_;
    const double outer = inner + part * Height(2.5);
    picture_.Line(At(inner, pole_ - phi), At(outer, pole_ - phi), kRed);
  }

  void DrawStressLegend(double stressScale) {
    const QPointF top(kLegendX, kStressLegendY);
    picture_.Line(top, {top.x(), top.y() + Height(2.5) / stressScale}, kRed);
    labels_.stressLegend.visible = true;
    if (!target_.IsPrinter()) return;
    labels_.stressLegend.backColor = kWhite;
    const bool perWeight = labels_.stressLegend.caption == kStressPerWeight;
    PrintAt({kPrintedLegendX, 300.0}, perWeight ? u"Pmax/Wb" : u"Pmax");
    PrintAt({kPrintedLegendX, 800.0}, perWeight ? u"1000 m^-2" : u"MPa");
  }

  void DrawForceArrow(double forceScale) {
    picture_.SetDrawWidth(static_cast<int>(std::lround(1.2)));
    const double shaft = Height(5.0) * forceScale;
    // Deliberate: on paper the head strokes of form D are as long as the shaft.
    const double head = IsPaperD() ? shaft : Height(15.0);
    picture_.Line(centre_, At(shaft, -force_), kBlue);
    picture_.Line(centre_, At(head, -force_ - kHeadStroke), kBlue);
    picture_.Line(centre_, At(head, -force_ + kHeadStroke), kBlue);
  }

  void DrawForceLegend() {
    const QPointF top(kLegendX, kForceLegendY);
    picture_.Line(top, {top.x(), top.y() + Height(5.0)}, kBlue);
    labels_.forceLegend.visible = true;
    if (!target_.IsPrinter()) return;
    labels_.forceLegend.backColor = kWhite;
    const bool perWeight = labels_.forceLegend.caption == kForcePerWeight;
    PrintAt({kPrintedLegendX, 2350.0}, perWeight ? u"R/Wb" : u"R");
    // Deliberate: these are the printed units, though the legend on screen says "1 kN".
    const QStringView newtons = side_ == Side::L ? u"1 N" : u"N";
    PrintAt({kPrintedLegendX, 2850.0}, perWeight ? QStringView(u"1") : newtons);
  }

  void DrawReferenceLines() {
    DrawReferenceLine(IsPaperD() ? Height(1.2) : LineLength(), 0.0);
    DrawReferenceLine(LineLength(), edge_);
  }

  void DrawReferenceLine(double length, double angle) {
    picture_.SetDrawStyle(LineStyle::Dotted);
    picture_.SetDrawWidth(1);
    picture_.Line(centre_, At(length, angle), kBlack);
  }

  // The short arc between the upright and `angle`.
  void DrawArc(double radius, double angle) {
    const double end = kVertical + (side_ == Side::L ? angle : -angle);
    picture_.Circle(centre_, radius, kBlack, std::min(kVertical, end), std::max(kVertical, end));
  }

  void DrawEdgeAngle() {
    DrawArc(LineLength() / 1.2, edge_);
    const QPointF end = At(LineLength(), edge_);
    const double besideD = end.x() - 1000.0;
    const double besideL = end.x() + (target_.IsPrinter() ? 500.0 : 100.0);
    Show(labels_.edgeAngle, {side_ == Side::L ? besideL : besideD, end.y()});
    if (!target_.IsPrinter()) return;
    fontSize_ = kAngleFontSize;
    // Deliberate: on paper the text of form L is nearer to the line than its label.
    PrintAt({side_ == Side::L ? end.x() + 100.0 : besideD, end.y()}, u"Theta CE");
  }

  void DrawForceAngle() {
    DrawArc(LineLength() / 1.25, -force_);
    // Deliberate: the line is longer in form L on screen than in the other three.
    const double length = IsScreenL() ? LineLength() : LineLength() / 1.1;
    const QPointF end = At(length, -force_);
    picture_.Line(centre_, end, kBlack);
    Show(labels_.forceAngle, end);
    if (target_.IsPrinter()) PrintAt(end, u"Theta-R");
  }

  void Show(PictureLabel& label, QPointF place) {
    label.left = place.x();
    label.top = place.y();
    label.visible = true;
    if (target_.IsPrinter()) label.backColor = kWhite;
  }

  // The letter of the form, deliberately the other one than the hip's.
  void PrintSide() {
    const PictureLabel& marker = side_ == Side::L ? labels_.rightHip : labels_.leftHip;
    fontSize_ = kSideFontSize;
    PrintAt({marker.left, marker.top}, side_ == Side::L ? u"L" : u"D");
  }

  void PrintAt(QPointF place, QStringView text) {
    const QPointF onPage = place + offset_;
    target_.Texts().push_back({text.toString(), onPage.x(), onPage.y(), fontSize_});
  }

  Side side_;
  Target target_;
  PictureBox& picture_;
  DiagramLabels& labels_;
  QPointF offset_;
  int fontSize_ = kLegendFontSize;
  QPointF centre_;
  double radius_ = 0.0;
  double edge_ = 0.0;
  double pole_ = 0.0;
  double force_ = 0.0;
};

}  // namespace

Vizual::Side Vizual::FormOf(std::optional<HipSide> hip) {
  return hip == HipSide::Left ? Side::D : Side::L;
}

double Vizual::ToDiagramRadians(double degrees) {
  return degrees * kDiagramPi / 180.0;
}

double Vizual::ToDiagramDegrees(double radians) {
  return radians * 180.0 / kDiagramPi;
}

void Vizual::DrawHipDiagram(Side side, const Target& target, double stressScale, double headSize,
                            double& edgeAngle, double& poleAngle, double& forceAngle,
                            double forceScale, double printOffsetX, double printOffsetY) {
  HipDrawing(side, target, printOffsetX, printOffsetY)
      .Draw(stressScale, headSize, edgeAngle, poleAngle, forceAngle, forceScale);
}
