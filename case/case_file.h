// The case file: one case as a small, readable text file. One labelled value per line;
// every record after the header ends with LF CR LF.
#pragma once

#include <QByteArray>
#include <QLocale>
#include <QString>

#include "case/case_entries.h"
#include "case/case_record.h"

namespace Vse {

// Larger files are no case files.
inline constexpr qint64 kLargestCaseFile = qint64{1024} * 1024;  // bytes

// The bytes of a case file: patient texts, geometry and results of the record as they are,
// numbers with the locale's separator, `date` (the short form) in the header. The peak stress is
// left out while the weight is unknown.
QByteArray ComposeCaseFile(const CaseRecord& record, const QString& date, const QLocale& locale);

// Writes the case to `path`, replacing any file as a whole: on failure an older file stays as it
// was. Gives the reason of a failure in the system's words, or an empty text.
QString WriteCaseFile(const QString& path, const CaseRecord& record, const QString& date,
                      const QLocale& locale);

// What reading gives. Either `entries`, or why not.
struct CaseFileContents {
  enum class Problem { None, NotCorrectFile, Unreadable };
  Problem problem = Problem::None;
  QString reason;  // for Unreadable: what is wrong with the file, for the user

  // Sex and hip are always chosen ("Unknown" or nothing reads as female and right), the units are
  // cm, degree and m. `hasName` is false when the name holds no blank: surname and first name are
  // to stay as they are. An empty name is one of two empty parts.
  CaseEntries entries;
  bool hasName = false;
  QString name;  // whole, as the file has it; empty when it is not known
};

// Reads a whole case file; the results in it are left aside. Every line must have its own label and
// a measurement its own unit, so that no damage makes another number. Files whose line ends were
// changed on the way (CR LF alone, LF alone, doubled), or which lost the blanks at the ends of
// their lines, read to the same entries.
CaseFileContents ReadCaseFile(const QString& path, const QLocale& locale);

// The same from bytes in memory, with the locale's code page or another one.
CaseFileContents ParseCaseFile(const QByteArray& bytes, const QLocale& locale);
CaseFileContents ParseCaseFile(const QByteArray& bytes, const char* codePage);

// A record's value, from after its 16-character label up to its last character, the LF. "Unknown"
// gives an empty text. A line too short for both gives an empty text.
QString FieldText(const QString& line);

// The same without the three characters of a unit suffix (" cm", " kg", " m ").
QString FieldNumberText(const QString& line);

}  // namespace Vse
