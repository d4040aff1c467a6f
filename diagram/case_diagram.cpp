// From the record to the diagram's arguments, and to its words.
#include "diagram/case_diagram.h"

#include "case/case_texts.h"
#include "case/number_text.h"

namespace {

// Peak stress and force in the units of the legends.
struct Scales {
  double stress;
  double force;
};

Scales ScalesOf(const CaseRecord& record, bool absolute) {
  constexpr double kPascalsPerMegapascal = 1e6;
  constexpr double kStressUnit = 1000.0;  // m^-2
  const Sila::HipResults& results = record.results();
  if (!absolute) return {results.pmaxWb / kStressUnit, results.rWb};
  return {results.pmax / kPascalsPerMegapascal, Vse::HipForceKilonewtons(record)};
}

// With the body weight known the diagram is in kN and Pa, otherwise over body weight.
QString ForceWords(const CaseRecord& record, const ResultTexts& texts, const QLocale& locale) {
  if (record.data.weightUnknown()) {
    return QStringLiteral("%1 body weights").arg(texts[Sila::Result::RWb]);
  }
  return QStringLiteral("%1 kN").arg(Vse::ResultText(Vse::HipForceKilonewtons(record), locale));
}

QString PeakWords(const ResultTexts& texts) {
  const auto withUnit = [&](Sila::Result id) { return texts[id] + Vse::UnitCaption(id); };
  return texts[Sila::Result::Pmax].isEmpty()
             ? withUnit(Sila::Result::PmaxWb) + QStringLiteral(" over body weight")
             : withUnit(Sila::Result::Pmax);
}

}  // namespace

void Vizual::DrawCaseDiagram(const CaseRecord& record, bool absolute, const Target& target,
                             double printOffsetX, double printOffsetY) {
  constexpr double kMillimetresPerMetre = 1000.0;
  const bool left = record.data.patient.hip == HipSide::Left;
  target.Labels().absoluteStress = absolute;
  target.Labels().leftHip.visible = left;
  target.Labels().rightHip.visible = !left;
  const Scales scales = ScalesOf(record, absolute);
  double edgeAngle = ToDiagramDegrees(record.data.inputs.thetaCE);
  double poleAngle = record.results().thetaPol;
  double forceAngle = record.results().thetaR;
  DrawHipDiagram(FormOf(record.data.patient.hip), target, scales.stress,
                 record.data.inputs.headRadius * kMillimetresPerMetre, edgeAngle, poleAngle,
                 forceAngle, scales.force, printOffsetX, printOffsetY);
}

QString Vizual::DiagramWords(const CaseRecord& record, const QLocale& locale) {
  const ResultTexts texts = Vse::ResultTextsOf(record, locale);
  const double edge = Sila::RadiansToDegrees(record.data.inputs.thetaCE);
  const bool left = record.data.patient.hip == HipSide::Left;
  return QStringLiteral(
             "%1 hip. The resultant force of %2 is inclined by %3 ° to the vertical. "
             "The contact stress has its pole at %4 ° and its peak of %5; the edge of "
             "the socket is at %6 °.")
      .arg(left ? QStringLiteral("Left") : QStringLiteral("Right"),
           ForceWords(record, texts, locale), texts[Sila::Result::ThetaR],
           texts[Sila::Result::ThetaPol], PeakWords(texts), Vse::NumberText(edge, locale));
}

QStringList Vizual::DiagramCaptions(const CaseRecord& record, const QLocale& locale) {
  constexpr double kCentimetresPerMetre = 100.0;
  const Sila::HipInputs& inputs = record.data.inputs;
  const QString edge = Vse::NumberText(Sila::RadiansToDegrees(inputs.thetaCE), locale);
  const QString radius = Vse::NumberText(inputs.headRadius * kCentimetresPerMetre, locale);
  return {QStringLiteral("Theta-CE = %1 °").arg(edge),
          QStringLiteral("Radius of femoral head = %1 cm").arg(radius),
          QStringLiteral("Theta-R = %1 °").arg(Vse::ResultText(record.results().thetaR, locale))};
}
