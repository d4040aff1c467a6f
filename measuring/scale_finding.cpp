#include "measuring/scale_finding.h"

#include <algorithm>
#include <cmath>

#include "case/number_text.h"
#include "landmarks/circle_fit.h"

namespace Measuring {

namespace {

using Landmarks::Magnification;
using Landmarks::PixelSpacing;
using Radiography::Scale;

QString Text(const std::string& text) {
  return QString::fromStdString(text);
}

// A note as a sentence.
QString Sentence(const std::string& note) {
  const QString text = Text(note);
  return text.left(1).toUpper() + text.mid(1) + u'.';
}

QStringList Sentences(const std::vector<std::string>& notes) {
  QStringList sentences;
  for (const std::string& note : notes) sentences << Sentence(note);
  sentences.removeDuplicates();  // one for each of many tables
  return sentences;
}

std::optional<double> NumberIn(const Draft& draft, Entry id) {
  return Vse::ReadNumber(draft[id].toStdString());
}

bool IsEmpty(const Draft& draft, Entry id) {
  return draft[id].trimmed().isEmpty();
}

// Nobody marks a known length to more than four digits; a magnification may be typed with more.
QString ShortText(double number, int digits, const QLocale& locale) {
  return Vse::NumberText(QString::number(number, 'g', digits).toDouble(), locale);
}

struct KnownObject {
  MarkKind mark = MarkKind::Ball;
  Entry size = Entry::BallDiameter;
  QStringView name;
};
constexpr std::array kObjects = {
    KnownObject{MarkKind::Ball, Entry::BallDiameter, u"ball of known size"},
    KnownObject{MarkKind::Line, Entry::LineLength, u"line of known length"}};

std::optional<Magnification> MagnificationOf(const KnownObject& object, const Draft& draft,
                                             double size, const PixelSpacing& spacing, double edgeU,
                                             double pointU) {
  const std::vector<Landmarks::Point> points = OnPicture(draft[object.mark], spacing);
  if (object.mark == MarkKind::Line) {
    return MagnificationOfLine(points[0], points[1], {size, 0.0}, pointU);
  }
  auto fit = Landmarks::FitCircle(points);
  if (!fit) return {};
  fit->u.reset();  // points that happen to meet a circle, or were put on one, are no better marked
  return MagnificationOfBall(*fit, {size, 0.0}, std::max(edgeU, fit->residual));
}

// Scale and words as the first object gives them whose marks and size are there.
void ApplyObjects(const PictureFacts& facts, const Draft& draft, const CheckedErrors& errors,
                  ScaleFinding& found) {
  const PixelSpacing spacing = facts.Spacing();
  for (const KnownObject& object : kObjects) {
    if (draft[object.mark].empty()) continue;
    found.asks[IndexOf(object.size)] = true;
    const std::optional<double> size = NumberIn(draft, object.size);
    if (!IsWhole(draft.points, object.mark) || !size) {
      found.todo = QStringLiteral("Finish marking the %1, and enter its size.").arg(object.name);
      continue;
    }
    const auto factor = MagnificationOf(object, draft, *size, spacing,
                                        InMillimetres(errors[ErrorOf::CircleEdge], spacing),
                                        InMillimetres(errors[ErrorOf::OtherPoint], spacing));
    if (!factor) {
      found.todo =
          QStringLiteral("The %1 gives no scale. Check its marks and its size.").arg(object.name);
      continue;
    }
    found.name = object.name.toString();
    found.magnification = factor;
    found.isByObject = true;
    found.todo.clear();
    if (facts.scale.asksMagnification && factor->factor < 1.0) {
      found.notes << QStringLiteral(
          "The magnification is below 1. Check the size that was entered.");
    }
    for (const Entry unused : {Entry::Magnification, Entry::HipHeight, Entry::SourceToTable}) {
      found.asks[IndexOf(unused)] = false;
    }
    return;
  }
}

void ApplyMagnification(const Draft& draft, Scale& scale, ScaleFinding& found) {
  found.asks[IndexOf(Entry::Magnification)] = true;
  if (IsEmpty(draft, Entry::Magnification)) {
    found.todo = QStringLiteral("Enter the magnification, or mark an object of known size.");
    return;
  }
  const auto typed = NumberIn(draft, Entry::Magnification);
  const auto settled = typed ? WithMagnification(scale, *typed) : std::optional<Scale>();
  if (settled) {
    scale = *settled;
  } else {
    found.todo = QStringLiteral("The magnification must be a number of 1 or more.");
  }
}

void ApplyHipHeight(const Draft& draft, Scale& scale, ScaleFinding& found) {
  const bool distanceKnown = scale.sourceToTable.has_value();
  found.asks[IndexOf(Entry::HipHeight)] = true;
  found.asks[IndexOf(Entry::SourceToTable)] = !distanceKnown;
  const bool isEmpty =
      IsEmpty(draft, Entry::HipHeight) || (!distanceKnown && IsEmpty(draft, Entry::SourceToTable));
  if (isEmpty) {
    found.todo = distanceKnown ? QStringLiteral("Enter the height of the hip above the table.")
                               : QStringLiteral(
                                     "Enter the height of the hip above the table, and the "
                                     "distance from the source to the table.");
    return;
  }
  const auto height = NumberIn(draft, Entry::HipHeight);
  const auto settled = height ? WithHipHeight(scale, *height, NumberIn(draft, Entry::SourceToTable))
                              : std::optional<Scale>();
  if (settled) {
    scale = *settled;
  } else {
    found.todo = QStringLiteral("The hip must lie above the table and below the source.");
  }
}

// What the file says, with what it asks the user for.
ScaleFinding ByFile(const PictureFacts& facts, const Draft& draft, const CheckedErrors& errors) {
  ScaleFinding found;
  Scale scale = facts.scale;
  found.notes = Sentences(scale.notes);
  if (scale.asksMagnification) ApplyMagnification(draft, scale, found);
  if (scale.asksHipHeight) ApplyHipHeight(draft, scale, found);
  found.name = Text(scale.name);
  if (!scale.spacing) {
    found.todo = QStringLiteral("Mark an object of known size to measure lengths.");
  } else if (!scale.asksMagnification && !scale.asksHipHeight) {
    const double factor = facts.scale.spacing->column / scale.spacing->column;
    found.magnification = Magnification{factor, errors[ErrorOf::Magnification]};
  }
  return found;
}

}  // namespace

PixelSpacing PictureFacts::Spacing() const {
  if (!scale.spacing) return {scale.aspect, 1.0};
  return {scale.spacing->row, scale.spacing->column};
}

PictureFacts FactsOf(const Radiography::Radiograph& radiograph) {
  const std::string directions = radiograph.rowDirection + '\\' + radiograph.columnDirection;
  const bool isSaid = !radiograph.rowDirection.empty() || !radiograph.columnDirection.empty();
  return {FindScale(radiograph.scale),
          Landmarks::ReadOrientation(isSaid ? std::string_view(directions) : std::string_view()),
          Sentences(radiograph.notes)};
}

ScaleFinding SettleScale(const PictureFacts& facts, const Draft& draft, const CheckedErrors& errors,
                         const QLocale& locale) {
  ScaleFinding found = ByFile(facts, draft, errors);
  ApplyObjects(facts, draft, errors, found);
  if (found.magnification) {
    const double atHip = facts.Spacing().column / found.magnification->factor;
    found.value = QStringLiteral("%1 mm per pixel at the hip").arg(ShortText(atHip, 4, locale));
    // Of a pixel size that is corrected already, or of none, the factor is not the picture's
    // magnification.
    if (facts.scale.asksMagnification) {
      found.value += QStringLiteral(", magnification ") +
                     ShortText(found.magnification->factor, found.isByObject ? 4 : 6, locale);
    }
  }
  return found;
}

std::vector<Landmarks::Point> OnPicture(const std::vector<Landmarks::PixelPlace>& places,
                                        const PixelSpacing& spacing) {
  std::vector<Landmarks::Point> points;
  points.reserve(places.size());
  for (const Landmarks::PixelPlace& place : places) {
    points.push_back(Landmarks::OnPicture(place, spacing));
  }
  return points;
}

double InMillimetres(double pixels, const PixelSpacing& spacing) {
  return pixels * std::sqrt(spacing.row * spacing.column);
}

}  // namespace Measuring
