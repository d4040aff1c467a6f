// The words for what the diagram draws.
#include "diagram/diagram_words.h"

#include "case/number_text.h"
#include "case/result_texts.h"

namespace {

// With the body weight known the diagram is in kN and Pa, otherwise over body weight.
QString Force(const CaseRecord& record, const ResultTexts& texts, const QLocale& locale) {
  if (record.weightUnknown) return QStringLiteral("%1 body weights").arg(texts.rWb);
  return QStringLiteral("%1 kN").arg(Vse::ResultText(Vse::HipForceKilonewtons(record), locale));
}

QString Peak(const ResultTexts& texts) {
  return texts.pmax
             ? *texts.pmax + Vse::kPmaxCaption.toString()
             : texts.pmaxWb + Vse::kPmaxWbCaption.toString() + QStringLiteral(" over body weight");
}

}  // namespace

QString Vizual::DiagramWords(const CaseRecord& record, const QLocale& locale) {
  const ResultTexts texts = Vse::ResultTextsOf(record, locale);
  const QString edge = Vse::NumberText(Vse::RadiansToDegrees(record.geometry.thetaCE), locale);
  return QStringLiteral(
             "%1 hip. The resultant force of %2 is inclined by %3 ° to the vertical. "
             "The contact stress has its pole at %4 ° and its peak of %5; the edge of "
             "the socket is at %6 °.")
      .arg(record.patient.hip == u"L" ? QStringLiteral("Left") : QStringLiteral("Right"),
           Force(record, texts, locale), texts.thetaR, texts.thetaPol, Peak(texts), edge);
}
