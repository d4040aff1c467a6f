// The resultant force by independent routes.
#include "model/resultant_force.h"

#include <gtest/gtest.h>

TEST(ResultantForce, HasTheKnownValuesForTheDefaultHip) {
  const Sila::HipForce force = Sila::ComputeHipForce({.lizm = 10.4,
                                                      .xizm = 0.5,
                                                      .zizm = 6.0,
                                                      .Cizm = 4.4,
                                                      .Hizm = 16.0,
                                                      .zasuk = 0.0,
                                                      .bodyWeight = 70.0});
  EXPECT_NEAR(force.rWb, 2.81222677558, 5e-12);
  EXPECT_NEAR(force.thetaR, 8.4764903085, 5e-11);
}
