// Writes grey pictures as the DICOM files of a radiography device: mandatory attributes and all.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

enum class DeviceKind {
  ComputedRadiography,  // CR
  DigitalXRay,          // DX, for presentation
};

struct PhantomDicom {
  DeviceKind kind = DeviceKind::DigitalXRay;
  int rows = 0;
  int columns = 0;
  std::vector<std::uint16_t> pixels;  // row by row; two's complement where they are signed
  int bitsAllocated = 16;
  int bitsStored = 12;
  bool isSigned = false;
  // By DICOM's keywords, values as text with backslashes between them. They go before what the
  // device would write; an empty text removes the attribute.
  std::map<std::string, std::string> attributes;
};

// Every form in which a file can tell its scale, by name, as attributes for PhantomDicom.
// `detector` in mm per pixel; the source lies `sourceToDetector` from the detector and
// `sourceToTable` from the table, in mm.
std::map<std::string, std::map<std::string, std::string>> ScaleForms(double detector,
                                                                     double sourceToDetector,
                                                                     double sourceToTable);

// The file in explicit little endian; empty when DCMTK refuses.
std::string ComposePhantomDicom(const PhantomDicom& phantom);

// Gives whether the file was written.
bool WritePhantomDicom(const std::string& path, const PhantomDicom& phantom);
