#include "radiograph/decoding/refusal.h"

namespace Radiography {

void Refuse(ReadTrouble trouble, const std::string& detail) {
  throw Refusal{{trouble, detail}};
}

}  // namespace Radiography
