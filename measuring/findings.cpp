// From a draft to what the window shows, afresh after every change.
#include "measuring/findings.h"

#include <algorithm>
#include <cmath>
#include <variant>

#include "case/case_texts.h"
#include "case/entry_check.h"
#include "case/number_text.h"
#include "measuring/mark_uncertainty.h"

namespace Measuring {

namespace {

using Landmarks::CircleFit;
using Landmarks::Mark;
using Landmarks::Marks;
using Landmarks::Point;

constexpr std::size_t kTrials = 8192;

MarkKind KindOf(Mark mark) {
  switch (mark) {
    case Mark::Head:
      return MarkKind::Head;
    case Mark::Other:
      return MarkKind::OtherHead;
    case Mark::SocketEdge:
      return MarkKind::SocketEdge;
    case Mark::CrestTop:
      return MarkKind::CrestTop;
    case Mark::CrestLateral:
      return MarkKind::CrestLateral;
    case Mark::Trochanter:
      break;
  }
  return MarkKind::Trochanter;
}

QString CaptionOf(Mark mark) {
  return RowOf(KindOf(mark)).caption.toString();
}

// By its number in the list of marks; the midline does as well as the other head.
QString NumberOf(Mark mark) {
  const QString number = QString::number(IndexOf(KindOf(mark)) + 1);
  const QString midline = QString::number(IndexOf(MarkKind::Midline) + 1);
  return mark == Mark::Other ? number + QStringLiteral(" (or ") + midline + u')' : number;
}

void FitCircles(const Draft& draft, const Landmarks::PixelSpacing& spacing, Findings& found) {
  for (const MarkRow& row : kMarks) {
    if (row.shape != MarkShape::Circle) continue;
    found.circles[IndexOf(row.id)] = Landmarks::FitCircle(OnPicture(draft[row.id], spacing));
  }
}

Marks MarksOf(const PictureFacts& facts, const Draft& draft, const Findings& found) {
  const Landmarks::PixelSpacing spacing = facts.Spacing();
  const auto point = [&](MarkKind id) -> std::optional<Point> {
    if (draft[id].empty()) return {};
    return Landmarks::OnPicture(draft[id].front(), spacing);
  };
  Marks marks;
  if (const auto& head = found.circles[IndexOf(MarkKind::Head)]) marks.head = head->circle;
  if (const auto& other = found.circles[IndexOf(MarkKind::OtherHead)]) {
    marks.other = other->circle;
  } else if (IsWhole(draft.points, MarkKind::Midline)) {
    const std::vector<Point> ends = OnPicture(draft[MarkKind::Midline], spacing);
    marks.other = Landmarks::Midline{ends[0], ends[1]};
  }
  marks.socketEdge = point(MarkKind::SocketEdge);
  marks.crestTop = point(MarkKind::CrestTop);
  marks.crestLateral = point(MarkKind::CrestLateral);
  marks.trochanter = point(MarkKind::Trochanter);
  if (facts.orientation.status == Landmarks::OrientationStatus::Given) {
    marks.towardsHead = facts.orientation.head;
  }
  return marks;
}

// As the form takes it: the user sees what is handed over, digit for digit.
QString RoundedText(double number, Sila::Kind kind, const QLocale& locale) {
  const double steps = kind == Sila::Kind::Angle ? 100.0 : 1000.0;
  return Vse::NumberText(std::round(number * steps) / steps, locale);
}

Sila::Unit UnitOfForm(Sila::Kind kind) {
  return kind == Sila::Kind::Angle ? Sila::Unit::Degree : Sila::Unit::Centimetre;
}

QString WhatIsMissing(const Marks& marks, std::size_t measured) {
  QStringList numbers;
  for (const Mark mark : Landmarks::MissingMarks(marks, Landmarks::kMeasurementMarks[measured])) {
    numbers << NumberOf(mark);
  }
  return numbers.isEmpty() ? QString()
                           : QStringLiteral("needs mark ") + numbers.join(QStringLiteral(", "));
}

void TakeMeasurements(const Marks& marks, const QLocale& locale, Findings& found) {
  const bool hasSize = found.scale.magnification.has_value();
  const Numbers numbers =
      NumbersOf(Measure(marks, found.scale.magnification.value_or(Landmarks::Magnification{})));
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const Sila::MeasurementRow& row = RowOfMeasured(i);
    MeasurementFinding& own = found.measurements[i];
    own.missing = WhatIsMissing(marks, i);
    if (own.missing.isEmpty() && row.kind() != Sila::Kind::Angle && !hasSize) {
      own.missing = QStringLiteral("needs the scale");
    } else if (own.missing.isEmpty() && std::isnan(numbers[i])) {
      own.missing = QStringLiteral("no direction in these marks");
    }
    if (!own.missing.isEmpty()) continue;
    const Sila::Unit unit = UnitOfForm(row.kind());
    own.text =
        RoundedText(Sila::FromHeld(row.kind(), unit, HeldOf(i, numbers[i])), row.kind(), locale);
  }
}

std::optional<HipSide> SideOfForm(const Landmarks::SideFinding& side) {
  if (!side.side) return {};
  return *side.side == Landmarks::Side::Left ? HipSide::Left : HipSide::Right;
}

void FindSide(const PictureFacts& facts, const Draft& draft, const Marks& marks, Findings& found) {
  std::optional<Landmarks::Side> said;
  if (draft.side) {
    said = *draft.side == HipSide::Left ? Landmarks::Side::Left : Landmarks::Side::Right;
  }
  if (const auto frame = FrameOf(marks)) {
    found.side = Landmarks::SideOf(*frame, facts.orientation, said);
  } else if (facts.orientation.status != Landmarks::OrientationStatus::Given) {
    found.side = {said, said ? Landmarks::SideDoubt::None : Landmarks::SideDoubt::NotSaid};
  }
}

// By a mark, beside the picture, or as in a case from before the measurement was there.
constexpr bool HasEntry(const Sila::MeasurementRow& row) {
  const auto isOwn = [&](const Landmarks::MeasurementMarks& marks) { return marks.key == row.key; };
  return row.later || row.id == Sila::Measurement::Zasuk ||
         std::any_of(Landmarks::kMeasurementMarks.begin(), Landmarks::kMeasurementMarks.end(),
                     isOwn);
}
// Without an entry for each the window would never have results.
static_assert(std::all_of(Sila::kRadiographMeasurements.begin(),
                          Sila::kRadiographMeasurements.end(), HasEntry));

void FillEntries(const Draft& draft, const QLocale& locale, Findings& found) {
  CaseEntries& entries = found.entries;
  entries.hip = SideOfForm(found.side);
  for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
    entries[row.id] = {Vse::OlderText(row), Sila::UnitsOf(row.kind()).front()};
  }
  for (std::size_t i = 0; i < found.measurements.size(); ++i) {
    const Sila::MeasurementRow& row = RowOfMeasured(i);
    entries[row.id] = {found.measurements[i].text, UnitOfForm(row.kind())};
  }
  const QString rotation = draft[Entry::Rotation].trimmed();
  const QString none = Vse::NumberText(0.0, locale);
  entries[Sila::Measurement::Zasuk].text = rotation.isEmpty() ? none : rotation;
  entries.bodyWeight = draft[Entry::BodyWeight].trimmed();
}

void Compute(const QLocale& locale, Findings& found) {
  const Vse::CheckedCase checked = Vse::CheckEntries(found.entries, false, locale);
  for (const Vse::Fault& fault : checked.faults) {
    const bool isTyped = fault.measurement == Sila::Measurement::Zasuk ||
                         fault.measurement == Sila::Measurement::BodyWeight;
    if (isTyped) found.wrongEntries.push_back(*fault.measurement);
  }
  if (!checked.data) return;
  found.record.emplace();
  found.record->data = *checked.data;
  found.outcome = Vse::RunModel(*found.record);
}

MarkErrors ErrorsOf(const CheckedErrors& errors, const Landmarks::PixelSpacing& spacing,
                    const Findings& found) {
  const auto mm = [&](ErrorOf id) { return InMillimetres(errors[id], spacing); };
  MarkErrors own;
  const auto circle = [&](MarkKind id) {
    const auto& fit = found.circles[IndexOf(id)];
    return fit ? ErrorOfCircle(*fit, mm(ErrorOf::CircleEdge)) : Landmarks::CircleCovariance{};
  };
  own.head = circle(MarkKind::Head);
  own.other = circle(MarkKind::OtherHead);
  own.socketEdge = mm(ErrorOf::SocketEdge);
  own.midline = own.crestTop = own.crestLateral = own.trochanter = mm(ErrorOf::OtherPoint);
  return own;
}

MarkedHip MarkedHipOf(const PictureFacts& facts, const Marks& marks, const CheckedErrors& errors,
                      const Findings& found) {
  MarkedHip hip;
  hip.marks = marks;
  hip.errors = ErrorsOf(errors, facts.Spacing(), found);
  hip.magnification = *found.scale.magnification;
  hip.rest.values = found.record->data.inputs;
  hip.rest.errors[Sila::IndexOf(Sila::Measurement::BodyWeight)].u = errors[ErrorOf::BodyWeight];
  return hip;
}

// In the order of kBudgetParts. Of the rest, only the body weight has an error.
QStringList CaptionsOfParts(const Marks& marks, bool weightKnown) {
  const bool isMidline = std::holds_alternative<Landmarks::Midline>(marks.other);
  QStringList captions = {
      CaptionOf(Mark::Head),
      RowOf(isMidline ? MarkKind::Midline : MarkKind::OtherHead).caption.toString(),
      CaptionOf(Mark::SocketEdge),
      CaptionOf(Mark::CrestTop),
      CaptionOf(Mark::CrestLateral),
      CaptionOf(Mark::Trochanter),
      QStringLiteral("Magnification")};
  if (weightKnown) captions << QStringLiteral("Body weight");
  return captions;
}

void ShareOut(const QStringList& captions, Findings& found) {
  for (const Sila::ResultRow& row : Sila::kResults) {
    const auto& result = found.sure->results[Sila::IndexOf(row.id)];
    std::vector<ShareBar>& bars = found.budget[Sila::IndexOf(row.id)];
    for (const QString& caption : captions) {
      ShareBar bar = {caption, {}};
      if (result && !result->spread.budget.empty()) bar.share = result->spread.budget[bars.size()];
      bars.push_back(bar);
    }
  }
}

void Propagate(const PictureFacts& facts, const Marks& marks, const CheckedErrors& errors,
               const Uncertainty::Points& points, Findings& found) {
  found.isAnErrorWrong = !errors.IsGood();
  if (!found.record || !errors.isAnyGiven || found.isAnErrorWrong) return;
  const MarkedHip hip = MarkedHipOf(facts, marks, errors, found);
  found.sure = ComputeHipUncertainty(hip, found.record->data.inputs, points,
                                     {.trials = kTrials, .budget = true, .parts = kBudgetParts});
  ShareOut(CaptionsOfParts(marks, hip.rest.values.bodyWeight.has_value()), found);
}

void NoteCircle(const Draft& draft, MarkKind id, Findings& found) {
  const auto& fit = found.circles[IndexOf(id)];
  const auto note = [&](const QString& text) { found.notices << text.arg(RowOf(id).caption); };
  if (!fit && IsWhole(draft.points, id)) {
    note(QStringLiteral("%1: no circle can be drawn through these points."));
  } else if (fit && fit->IsShortArc()) {
    note(
        QStringLiteral("%1: the points cover less than 150° of the edge, so the radius is "
                       "uncertain."));
  }
}

void NoteMarks(const Draft& draft, const Marks& marks, Findings& found) {
  const auto note = [&](const QString& text) { found.notices << text; };
  if (IsUpsideDown(marks)) {
    note(QStringLiteral("The crest is marked below the head: is the picture upside down?"));
  }
  for (const MarkKind id : {MarkKind::Head, MarkKind::OtherHead}) NoteCircle(draft, id, found);
  if (found.side.doubt == Landmarks::SideDoubt::Disagrees) {
    note(QStringLiteral("The file says that this is the other hip."));
  } else if (found.side.doubt == Landmarks::SideDoubt::Unclear) {
    note(QStringLiteral("According to the directions in the file, this hip is on neither side."));
  }
}

}  // namespace

bool Findings::HasMeasurement() const {
  return std::any_of(measurements.begin(), measurements.end(),
                     [](const MeasurementFinding& own) { return !own.text.isEmpty(); });
}

Findings FindAll(const PictureFacts& facts, const Draft& draft, const CheckedErrors& errors,
                 const Uncertainty::Points& points, const QLocale& locale) {
  Findings found;
  found.notices = facts.notes;
  found.scale = SettleScale(facts, draft, errors, locale);
  FitCircles(draft, facts.Spacing(), found);
  const Marks marks = MarksOf(facts, draft, found);
  TakeMeasurements(marks, locale, found);
  FindSide(facts, draft, marks, found);
  FillEntries(draft, locale, found);
  Compute(locale, found);
  Propagate(facts, marks, errors, points, found);
  NoteMarks(draft, marks, found);
  return found;
}

}  // namespace Measuring
