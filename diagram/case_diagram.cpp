// From the record to the diagram's arguments.
#include "diagram/case_diagram.h"

namespace {

// Peak stress and force in the units of the legends.
struct Scales {
  double stress;
  double force;
};

Scales ScalesOf(const CaseRecord& record, bool absolute) {
  constexpr double kPascalsPerMegapascal = 1e6;
  constexpr double kStressUnit = 1000.0;  // m^-2
  const Results& results = record.results;
  if (!absolute) return {results.pmaxWb / kStressUnit, results.rWb};
  return {results.pmax / kPascalsPerMegapascal, Vse::HipForceKilonewtons(record)};
}

}  // namespace

void Vizual::DrawCaseDiagram(const CaseRecord& record, bool absolute, const Target& target,
                             double printOffsetX, double printOffsetY) {
  constexpr double kMillimetresPerMetre = 1000.0;
  const bool left = record.patient.hip == u"L";
  target.Labels().absoluteStress = absolute;
  target.Labels().leftHip.visible = left;
  target.Labels().rightHip.visible = !left;
  const Scales scales = ScalesOf(record, absolute);
  double edgeAngle = ToDiagramDegrees(record.geometry.thetaCE);
  double poleAngle = record.results.thetaPol;
  double forceAngle = record.results.thetaR;
  DrawHipDiagram(FormOf(record.patient.hip), target, scales.stress,
                 record.geometry.headRadius * kMillimetresPerMetre, edgeAngle, poleAngle,
                 forceAngle, scales.force, printOffsetX, printOffsetY);
}
