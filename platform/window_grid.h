// The grid on which the windows are laid out.
#pragma once

inline constexpr int kGrid = 8;  // device-independent pixels
