// The hip stress diagram in words, for those who do not see it.
#pragma once

#include <QLocale>
#include <QString>

#include "case/case_record.h"

namespace Vizual {

// What the diagram of a computed case shows, in whole sentences; numbers as in the results panel.
QString DiagramWords(const CaseRecord& record, const QLocale& locale);

}  // namespace Vizual
