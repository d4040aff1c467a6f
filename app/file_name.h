// A file name from a patient's name.
#pragma once

#include <QString>

// The name without what file systems refuse or mistake: path separators, control characters, the
// reserved characters and device names of other systems, dots and blanks at the ends; not too long.
// A name of which nothing is left becomes "Unknown". Gives no ending.
QString SafeFileName(const QString& name);
