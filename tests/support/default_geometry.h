// The measurements that the case form proposes for a new case, in held units.
#pragma once

#include "case/case_record.h"

inline Geometry DefaultGeometry() {
  return {.lizm = 10.4,
          .xizm = 0.5,
          .zizm = 6.0,
          .Cizm = 4.4,
          .Hizm = 16.0,
          .zasuk = 0.0,
          .thetaCE = Vse::DegreesToRadians(30.0),
          .headRadius = 0.025};
}
