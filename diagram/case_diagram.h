// The hip stress diagram of a case: what of the record the drawing shows, in which units, and the
// same in words.
#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>

#include "case/case_record.h"
#include "diagram/hip_diagram.h"

namespace Vizual {

// Draws the record's hip in its form and shows the marker of its side. With `absolute` the peak
// stress is in MPa and the force in kN, otherwise both are over body weight (the stress in 1000
// m^-2). The offsets are those of DrawHipDiagram. The pen of head outline and fan is the caller's.
void DrawCaseDiagram(const CaseRecord& record, bool absolute, const Target& target,
                     double printOffsetX = 0.0, double printOffsetY = 0.0);

// What the diagram of a computed case shows, in whole sentences, for those who do not see it;
// numbers as in the results panel.
QString DiagramWords(const CaseRecord& record, const QLocale& locale);

// The captions beside the diagram of a computed case, one per line.
QStringList DiagramCaptions(const CaseRecord& record, const QLocale& locale);

}  // namespace Vizual
