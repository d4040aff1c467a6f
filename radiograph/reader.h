// Reads a picture file without letting it near this process: a program of its own decodes it,
// within limits of memory and time.
#pragma once

#include <QString>
#include <stop_token>
#include <string>

#include "radiograph/limits.h"
#include "radiograph/radiograph.h"

namespace Radiography {

struct RadiographReader {
  std::string decoder;  // path of telmarion-decode, in the system's bytes
  DecoderLimits limits;
};

// The decoder that belongs to a program in `programFolder`: as installed, or as built.
std::string FindDecoder(const QString& programFolder);

// Blocks until the picture is there, refused or given up; belongs on a thread of its own, never on
// that of the windows. A stop ends the decoder within some 20 ms. Never throws for what a file
// says.
ReadResult ReadRadiograph(const std::string& path, const RadiographReader& reader,
                          const std::stop_token& stop = {});

}  // namespace Radiography
