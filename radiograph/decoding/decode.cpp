#include "radiograph/decoding/decode.h"

#include <QCryptographicHash>
#include <algorithm>
#include <array>
#include <new>
#include <string_view>

#include "radiograph/decoding/dicom_picture.h"
#include "radiograph/decoding/plain_picture.h"

namespace Radiography {

namespace {

using std::string_view;
using namespace std::string_view_literals;

string_view Text(Bytes bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// With the mark behind its preamble, or from before there was one: then it begins with a group of
// low number.
bool IsDicom(string_view file) {
  constexpr std::size_t kPreamble = 128;
  if (file.size() > kPreamble && file.substr(kPreamble).starts_with("DICM")) return true;
  constexpr std::array kGroups = {"\2\0"sv, "\10\0"sv, "\0\10"sv};
  return file.size() > 8 && std::any_of(kGroups.begin(), kGroups.end(), [file](string_view group) {
           return file.starts_with(group);
         });
}

std::string Sha256(Bytes file) {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  hash.addData(QByteArrayView(file.data(), static_cast<qsizetype>(file.size())));
  return hash.result().toHex().toStdString();
}

Radiograph Decode(Bytes file, const PictureLimits& limits) {
  if (static_cast<std::int64_t>(file.size()) > limits.bytes) Refuse(ReadTrouble::TooLarge);
  if (file.empty()) Refuse(ReadTrouble::NotAPicture);
  Radiograph radiograph =
      IsDicom(Text(file)) ? DecodeDicom(file, limits) : DecodePlainPicture(file, limits);
  radiograph.sha256 = Sha256(file);
  return radiograph;
}

}  // namespace

ReadResult DecodePicture(Bytes file, const PictureLimits& limits) {
  try {
    return Decode(file, limits);
  } catch (const Refusal& refusal) {
    return refusal.failure;
  } catch (const std::bad_alloc&) {
    return ReadFailure{ReadTrouble::TooMuchMemory, {}};
  }
}

}  // namespace Radiography
