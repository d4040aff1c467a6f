#include "radiograph/radiograph.h"

namespace Radiography {

namespace {

const char* Sentence(ReadTrouble trouble) {
  switch (trouble) {
    case ReadTrouble::CannotOpen:
      return "The file cannot be read";
    case ReadTrouble::NotAPicture:
      return "The file is not a picture that can be read";
    case ReadTrouble::Colour:
      return "The picture is in colour; a radiograph is grey";
    case ReadTrouble::CutShort:
      return "The file is cut short";
    case ReadTrouble::UnknownSyntax:
      return "The picture is compressed in a way that cannot be read";
    case ReadTrouble::TooLarge:
      return "The picture is larger than 16,384 pixels a side or 1 GiB when decoded";
    case ReadTrouble::Contradiction:
      return "The file contradicts itself";
    case ReadTrouble::Damaged:
      return "The file is damaged";
    case ReadTrouble::TooMuchMemory:
      return "Decoding the picture needs too much memory";
    case ReadTrouble::TookTooLong:
      return "Decoding the picture takes too long";
    case ReadTrouble::DecoderMissing:
      return "The program that decodes pictures cannot be started";
    case ReadTrouble::DecoderDied:
      return "The file made the program that decodes pictures fail";
    case ReadTrouble::Cancelled:
      return "Reading was cancelled";
  }
  return "";
}

}  // namespace

std::string FailureText(const ReadFailure& failure) {
  const std::string sentence = Sentence(failure.trouble);
  return failure.detail.empty() ? sentence + "." : sentence + ": " + failure.detail + ".";
}

}  // namespace Radiography
