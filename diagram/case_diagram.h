// The hip stress diagram of a case: what of the record the drawing shows, and in which units.
#pragma once

#include "case/case_record.h"
#include "diagram/hip_diagram.h"

namespace Vizual {

// Draws the record's hip in its form and shows the marker of its side. With `absolute` the peak
// stress is in MPa and the force in kN, otherwise both are over body weight (the stress in 1000
// m^-2). The offsets are those of DrawHipDiagram. The pen of head outline and fan is the caller's.
void DrawCaseDiagram(const CaseRecord& record, bool absolute, const Target& target,
                     double printOffsetX = 0.0, double printOffsetY = 0.0);

}  // namespace Vizual
