// Equilibrium of moments and forces about the centre of the femoral head.
#include "model/resultant_force.h"

#include <cmath>
#include <utility>

namespace Sila {

namespace {

constexpr double kLegWeightShare = 0.161;  // weight of one leg over the body weight

// Group 2 leads the columns of the moment matrix, then group 3, then group 1.
constexpr std::array<std::size_t, 3> kColumnGroup = {1, 2, 0};

Vector3 Column(const MuscleGroup& group) {
  Vector3 sum;
  for (std::size_t i = 0; i < group.count; ++i) {
    sum = sum + group.area[i] * Cross(group.direction[i], group.pelvicTilted[i]);
  }
  return sum;
}

// Puts the row with the largest entry of this column, from the diagonal down, on the diagonal.
void PivotColumn(Matrix3& matrix, std::array<double, 3>& right, std::size_t column) {
  std::size_t best = column;
  for (std::size_t row = column + 1; row < 3; ++row) {
    if (std::abs(matrix[row][column]) > std::abs(matrix[best][column])) best = row;
  }
  if (best == column) return;
  std::swap(matrix[column], matrix[best]);
  std::swap(right[column], right[best]);
}

}  // namespace

void ComputeMuscleDirections(HipForce& force) {
  for (MuscleGroup& group : force.groups) {
    for (std::size_t i = 0; i < group.count; ++i) {
      const Vector3 line = group.femoralTilted[i] - group.pelvicTilted[i];
      group.direction[i] = (1.0 / Length(line)) * line;
    }
  }
  force.loads.legWeight = kLegWeightShare * force.loads.weight;
}

void BuildLoadVector(HipForce& force) {
  StanceLoads& loads = force.loads;
  const double sideways = -(loads.legLever * loads.legWeight + loads.bodyLever * -loads.weight);
  force.loadVector = {0.0, sideways, 0.0};
  loads.loadLever = sideways / (-loads.weight - loads.legWeight);
}

void BuildMomentMatrix(HipForce& force) {
  for (std::size_t column = 0; column < 3; ++column) {
    const Vector3 moment = Column(force.groups[kColumnGroup[column]]);
    force.momentMatrix[0][column] = moment.x;
    force.momentMatrix[1][column] = moment.y;
    force.momentMatrix[2][column] = moment.z;
  }
}

Vector3 SolveLinear3(Matrix3 matrix, Vector3 right) {
  std::array<double, 3> b = {right.x, right.y, right.z};
  for (std::size_t column = 0; column < 3; ++column) {
    PivotColumn(matrix, b, column);
    for (std::size_t row = column + 1; row < 3; ++row) {
      const double factor = matrix[row][column] / matrix[column][column];
      for (std::size_t k = column; k < 3; ++k) matrix[row][k] -= factor * matrix[column][k];
      b[row] -= factor * b[column];
    }
  }
  const double z = b[2] / matrix[2][2];
  const double y = (b[1] - matrix[1][2] * z) / matrix[1][1];
  const double x = (b[0] - matrix[0][1] * y - matrix[0][2] * z) / matrix[0][0];
  return {x, y, z};
}

void ComputeGroupForces(HipForce& force) {
  const std::array<double, 3> tensions = {force.tensions.x, force.tensions.y, force.tensions.z};
  for (std::size_t column = 0; column < 3; ++column) {
    MuscleGroup& group = force.groups[kColumnGroup[column]];
    const double tension = tensions[column];
    Vector3 sum;
    for (std::size_t i = 0; i < group.count; ++i) {
      const double magnitude = group.area[i] * tension;
      sum = sum + group.area[i] * group.direction[i];
      group.muscleForceMagnitude[i] = magnitude;
      group.muscleForce[i] = magnitude * group.direction[i];
    }
    group.tension = tension;
    group.sum = sum;
    group.sumLength = Length(sum);
    group.sumDirection = (1.0 / group.sumLength) * sum;
    group.forceMagnitude = tension * group.sumLength;
  }
}

double GroupAngle(const MuscleGroup& group) {
  return std::atan(group.sumDirection.z / group.sumDirection.x) * 180.0 / kPi;
}

void ComputeResultantForce(HipForce& force) {
  const StanceLoads& loads = force.loads;
  Vector3 r = {loads.weight - loads.legWeight, 0.0, 0.0};
  for (const MuscleGroup& group : force.groups) {
    r = r + group.forceMagnitude * group.sumDirection;
  }
  force.resultant = r;
  force.resultantMagnitude = Length(r);
  force.rWb = std::sqrt(r.x * r.x + r.z * r.z) / loads.weight;
  force.thetaR = 90.0 - std::atan(r.x / std::abs(r.z)) * 180.0 / kPi;
}

void ComputeHipForce(const HipInputs& inputs, HipForce& force) {
  BuildHipGeometry(inputs, force);
  ComputeMuscleDirections(force);
  BuildLoadVector(force);
  BuildMomentMatrix(force);
  force.tensions = SolveLinear3(force.momentMatrix, force.loadVector);
  ComputeGroupForces(force);
  ComputeResultantForce(force);
}

HipForce ComputeHipForce(const HipInputs& inputs) {
  HipForce force;
  ComputeHipForce(inputs, force);
  return force;
}

bool IsWithinModelRange(double thetaR) {
  return thetaR >= 0.0;
}

}  // namespace Sila
