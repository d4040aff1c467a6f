#include "radiograph/decoding/refusal.h"

void Refuse(ReadTrouble trouble, const std::string& detail) {
  throw Refusal{{trouble, detail}};
}
