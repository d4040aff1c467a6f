// The records of a case file's text, whatever became of its line ends on the way.
#pragma once

#include <QString>
#include <QStringList>

namespace Vse {

// The header, then every record with something in it, in the order of the file and without line
// ends. Only the comments can hold line ends, as LF, and lines that look like those of other
// records. Where the end of the comments is in doubt, each of their lines is a record.
QStringList RecordsOf(const QString& text);

}  // namespace Vse
