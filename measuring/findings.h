// What the marks and the entries of a draft give: the scale, the measurements, the results and how
// sure they are.
#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>
#include <array>
#include <optional>
#include <vector>

#include "case/case_record.h"
#include "landmarks/circle_fit.h"
#include "landmarks/measure.h"
#include "landmarks/side.h"
#include "measuring/draft.h"
#include "measuring/error_entries.h"
#include "measuring/scale_finding.h"
#include "platform/share_bars.h"
#include "uncertainty/hip_uncertainty.h"

namespace Measuring {

struct MeasurementFinding {
  QString text;     // rounded, as it will stand in the form: cm to 0.001, degrees to 0.01
  QString missing;  // why there is no text
};

// One result's parts, by what can be uncertain.
using BudgetOfMarks = std::array<std::vector<ShareBar>, Sila::kResultCount>;

struct Findings {
  ScaleFinding scale;
  std::array<std::optional<Landmarks::CircleFit>, kMarkCount> circles;  // mm on the picture
  std::array<MeasurementFinding, Landmarks::kMeasurementMarks.size()> measurements;
  Landmarks::SideFinding side;
  std::vector<Sila::Measurement> wrongEntries;  // rotation or body weight that is no number
  // For the form: side, measurements, rotation and weight; empty where there is nothing to hand
  // over.
  CaseEntries entries;
  // Of these entries, computed as the form would; none while one is missing.
  std::optional<CaseRecord> record;
  Sila::HipOutcome outcome = Sila::HipOutcome::Ok;
  bool isAnErrorWrong = false;  // that of a mark or a number, as entered
  // None without a record, without any error, or with a wrong one; see HipUncertainty for a hip
  // that is refused.
  std::optional<Uncertainty::HipUncertainty> sure;
  BudgetOfMarks budget;
  QStringList notices;  // what the user should know of the file and of the marks

  // There is something that the form could take over.
  bool HasMeasurement() const;
};

// `points` has kMarkedHipSources dimensions. Errors that are wrong give no intervals.
Findings FindAll(const PictureFacts& facts, const Draft& draft, const CheckedErrors& errors,
                 const Uncertainty::Points& points, const QLocale& locale);

}  // namespace Measuring
