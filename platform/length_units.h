// Units of length on screen and paper, and the grid on which the windows are laid out.
#pragma once

inline constexpr double kPixelsPerInch = 96.0;  // device-independent pixels
inline constexpr double kPointsPerInch = 72.0;
inline constexpr double kTwipsPerInch = 1440.0;

inline constexpr double kTwipsPerPixel = kTwipsPerInch / kPixelsPerInch;
inline constexpr double kTwipsPerPoint = kTwipsPerInch / kPointsPerInch;

inline constexpr int kGrid = 8;  // device-independent pixels
