// How marks are set, moved and taken away. Every change goes through the undo stack.
#include <QSignalBlocker>
#include <QStatusBar>
#include <cmath>
#include <new>
#include <numbers>

#include "landmarks/edge_snap.h"
#include "measuring/draft_change.h"
#include "measuring/measuring_window.h"

namespace Measuring {

namespace {

using Landmarks::PixelPlace;
using Landmarks::SnapDoubt;

// A snapped circle is held as this many points, each as uncertain as one that was clicked: the
// error that the search itself finds leaves out what neighbouring points of an edge share.
constexpr int kSnappedPoints = 8;

QString WordsOf(SnapDoubt doubt) {
  switch (doubt) {
    case SnapDoubt::None:
      return {};
    case SnapDoubt::NoStart:
      return QStringLiteral("The circle is too small to snap.");
    case SnapDoubt::NoEdge:
      return QStringLiteral("No edge was found there.");
    case SnapDoubt::OtherRound:
      return QStringLiteral("Two edges fit about equally well.");
    case SnapDoubt::TooLittle:
      return QStringLiteral("Too little of the edge is visible.");
    case SnapDoubt::TooFar:
      break;
  }
  return QStringLiteral("The edge is too far from the circle drawn.");
}

std::vector<PixelPlace> PlacesOn(const Landmarks::Circle& circle,
                                 const Landmarks::PixelSpacing& spacing) {
  std::vector<PixelPlace> places;
  for (int i = 0; i < kSnappedPoints; ++i) {
    const double angle = 2.0 * std::numbers::pi * i / kSnappedPoints;
    const Landmarks::Point way = {std::cos(angle), std::sin(angle)};
    places.push_back(Landmarks::InPixels(circle.centre + circle.radius * way, spacing));
  }
  return places;
}

// The search expects bright bone to have high levels.
Landmarks::Snap SnapOn(const Radiography::Radiograph& picture,
                       const Landmarks::PixelSpacing& spacing, const Landmarks::Circle& rough) {
  const auto snap = [&](std::span<const std::uint16_t> levels) {
    return Landmarks::SnapToEdge({levels, picture.width, picture.height, spacing}, rough);
  };
  if (BrightIsHigh(picture)) return snap(picture.levels);
  std::vector<std::uint16_t> levels = picture.levels;
  const auto highest = static_cast<std::uint16_t>((1U << picture.bits) - 1U);
  for (std::uint16_t& level : levels) level = static_cast<std::uint16_t>(highest - level);
  return snap(levels);
}

}  // namespace

void MeasuringWindow::ConnectView() {
  connect(view_, &RadiographView::PointAdded, this, &MeasuringWindow::AddPoint);
  connect(view_, &RadiographView::PointMoved, this, &MeasuringWindow::MovePoint);
  connect(view_, &RadiographView::PointRemoved, this, &MeasuringWindow::RemovePoint);
  connect(view_, &RadiographView::RoughCircleDrawn, this, &MeasuringWindow::SnapCircle);
  connect(view_, &RadiographView::ViewChanged, this, &MeasuringWindow::ShowStatus);
  connect(view_, &RadiographView::PointerMoved, this, &MeasuringWindow::ShowPointer);
}

void MeasuringWindow::ConnectControls() {
  for (const EntryRow& row : kEntries) {
    QLineEdit* box = controls_.entries[IndexOf(row.id)].box;
    box->installEventFilter(this);
    connect(box, &QLineEdit::textEdited, this, [this, id = row.id](const QString& text) {
      Draft after = draft_;
      after[id] = text;
      Change(after, static_cast<int>(IndexOf(id)));
    });
  }
  for (const EntryControls& error : controls_.errors) {
    connect(error.box, &QLineEdit::textChanged, this, &MeasuringWindow::Refresh);
    connect(error.box, &QLineEdit::editingFinished, this, &MeasuringWindow::KeepErrors);
  }
  connect(controls_.side, &QComboBox::currentIndexChanged, this, [this](int choice) {
    Draft after = draft_;
    after.side = std::nullopt;
    if (choice == static_cast<int>(SideChoice::Left)) after.side = HipSide::Left;
    if (choice == static_cast<int>(SideChoice::Right)) after.side = HipSide::Right;
    Change(after, gesture_++);
  });
  connect(controls_.marks, &TextTable::RowChosen, this,
          [this](int row) { SetCurrent(kMarks[static_cast<std::size_t>(std::max(row, 0))].id); });
  connect(controls_.results, &TextTable::RowChosen, this, &MeasuringWindow::ShowBudget);
  connect(controls_.use, &QPushButton::clicked, this, &MeasuringWindow::UseThese);
  connect(controls_.savePicture, &QPushButton::clicked, this, &MeasuringWindow::SavePicture);
}

void MeasuringWindow::Change(const Draft& after, int gesture) {
  if (after == draft_) return;
  ShowStatus();
  undo_.push(
      new DraftChange(draft_, after, gesture, [this](const Draft& draft) { TakeDraft(draft); }));
}

void MeasuringWindow::TakeDraft(const Draft& draft) {
  draft_ = draft;
  ShowDraft();
  Refresh();
  keepTimer_.start();
}

void MeasuringWindow::AddPoint(MarkKind kind, PixelPlace place) {
  const MarkRow& row = RowOf(kind);
  if (draft_[kind].size() >= row.most()) {
    statusBar()->showMessage(row.caption.toString() +
                             QStringLiteral(" is set. Drag its points to move it, or choose "
                                            "another mark."));
    return;
  }
  Draft after = draft_;
  after[kind].push_back(place);
  Change(after, gesture_++);
  if (row.shape != MarkShape::Circle && IsWhole(draft_.points, kind)) GoToNextMark();
}

// All of a drag is one step.
void MeasuringWindow::MovePoint(MarkKind kind, std::size_t index, PixelPlace place, bool isDone) {
  if (index >= draft_[kind].size()) return;
  Draft after = draft_;
  after[kind][index] = place;
  Change(after, gesture_);
  if (isDone) ++gesture_;
}

void MeasuringWindow::RemovePoint(MarkKind kind, std::size_t index) {
  if (index >= draft_[kind].size()) return;
  Draft after = draft_;
  after[kind].erase(after[kind].begin() + static_cast<std::ptrdiff_t>(index));
  Change(after, gesture_++);
}

void MeasuringWindow::RemoveMark() {
  Draft after = draft_;
  after[current_].clear();
  Change(after, gesture_++);
}

void MeasuringWindow::SnapCircle(MarkKind kind, PixelPlace centre, PixelPlace edge) {
  const Landmarks::PixelSpacing spacing = facts_.Spacing();
  const Landmarks::Point middle = Landmarks::OnPicture(centre, spacing);
  PutSnapped(kind, {middle, Length(Landmarks::OnPicture(edge, spacing) - middle)});
}

void MeasuringWindow::SnapCurrent() {
  const auto& fit = found_.circles[IndexOf(current_)];
  if (fit) return PutSnapped(current_, fit->circle);
  statusBar()->showMessage(
      QStringLiteral("Mark three points of a circle first, or draw it roughly."));
}

void MeasuringWindow::PutSnapped(MarkKind kind, const Landmarks::Circle& rough) {
  const Landmarks::PixelSpacing spacing = facts_.Spacing();
  const auto refuse = [this](const QString& why) {
    statusBar()->showMessage(why +
                             QStringLiteral(" Click three or more points on the edge instead."));
  };
  Landmarks::Snap snap;
  try {
    snap = SnapOn(*picture_, spacing, rough);
  } catch (const std::bad_alloc&) {
    return refuse(QStringLiteral("There is not enough memory to find the edge."));
  }
  if (!snap.fit) return refuse(WordsOf(snap.doubt));
  Draft after = draft_;
  after[kind] = PlacesOn(snap.fit->circle, spacing);
  Change(after, gesture_++);
  GoToNextMark();
}

void MeasuringWindow::SetCurrent(MarkKind kind) {
  current_ = kind;
  view_->SetCurrent(kind);
  const QSignalBlocker quiet(controls_.marks);
  controls_.marks->Choose(static_cast<int>(IndexOf(kind)));
  controls_.drawing->ShowMark(kind);
  controls_.instruction->setText(
      picture_ ? RowOf(kind).instruction.toString()
               : QStringLiteral("Open a radiograph to measure on it: File, Open radiograph."));
}

// The first mark after the current one that is still wanted; the midline only without the other
// head. The scale's objects are for the user to choose.
void MeasuringWindow::GoToNextMark() {
  const bool isFramed =
      IsWhole(draft_.points, MarkKind::OtherHead) || IsWhole(draft_.points, MarkKind::Midline);
  constexpr std::size_t kAnatomy = IndexOf(MarkKind::Ball);
  for (std::size_t step = 1; step <= kAnatomy; ++step) {
    const MarkKind next = kMarks[(IndexOf(current_) + step) % kAnatomy].id;
    const bool isOther = next == MarkKind::Midline || next == MarkKind::OtherHead;
    if (IsWhole(draft_.points, next) || (isOther && isFramed)) continue;
    return SetCurrent(next);
  }
}

}  // namespace Measuring
