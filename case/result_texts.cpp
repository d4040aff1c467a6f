// Results as text.
#include "case/result_texts.h"

#include "case/number_text.h"

namespace Vse {

QString ResultText(double value, const QLocale& locale) {
  constexpr int kShownDecimals = 2;
  return NumberText(TruncateToDecimals(value, kShownDecimals), locale);
}

ResultTexts ResultTextsOf(const CaseRecord& record, const QLocale& locale) {
  const Results& results = record.results;
  ResultTexts texts = {.rWb = ResultText(results.rWb, locale),
                       .thetaR = ResultText(results.thetaR, locale),
                       .thetaPol = ResultText(results.thetaPol, locale),
                       .pmaxWb = ResultText(results.pmaxWb, locale),
                       .pmax = {}};
  if (!record.weightUnknown) texts.pmax = ResultText(results.pmax, locale);
  return texts;
}

}  // namespace Vse
