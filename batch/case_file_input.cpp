// Listing case files and writing each as a CSV record.
#include "batch/case_file_input.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QString>
#include <algorithm>
#include <string_view>

#include "batch/chunk_reader.h"
#include "batch/cohort_error.h"
#include "batch/columns.h"
#include "batch/input_file.h"
#include "case/case_conversion.h"
#include "case/case_file.h"

namespace Cohort {

namespace {

using Problem = Vse::CaseFileContents::Problem;

std::string Quoted(const QString& text) {
  std::string field = text.toStdString();
  if (field.find_first_of(",\"\r\n") == std::string::npos) return field;
  std::string quoted = "\"";
  for (const char c : field) quoted.append(c == '"' ? 2 : 1, c);
  quoted += '"';
  return quoted;
}

std::string Record(const QStringList& fields) {
  std::string record;
  for (const QString& field : fields) {
    if (!record.empty()) record += ',';
    record += Quoted(field);
  }
  record += '\n';
  return record;
}

std::string HeaderRecord() {
  QStringList names = {"file", "name", "sex", "dateOfBirth", "hip", "comments"};
  for (const std::string_view name : kInputNames) names << QString::fromUtf8(name);
  return Record(names << "remark");
}

QString Trouble(const Vse::CaseFileContents& contents) {
  return contents.problem == Problem::NotCorrectFile ? QStringLiteral("Not correct file")
                                                     : contents.reason;
}

// A file that cannot be read has no entries, and the remark tells why.
std::string CaseRecordText(const QString& path) {
  const Vse::CaseFileContents contents = Vse::ReadCaseFile(path, QLocale::system());
  const bool readable = contents.problem == Problem::None;
  const CaseEntries& entries = contents.entries;
  const PatientTexts patient = Vse::PatientTextsOf(entries, false);
  QStringList fields = {QFileInfo(path).fileName()};
  if (readable) {
    fields << (contents.name.isEmpty() ? patient.name : contents.name) << patient.sex
           << patient.dateOfBirth << patient.hip << patient.comments;
  } else {
    fields << QStringList(5);
  }
  for (const MeasureEntry& measure : entries.measures) fields << measure.text.trimmed();
  return Record(fields << entries.bodyWeight << (readable ? QString() : Trouble(contents)));
}

// Spreadsheets save tables separated by tabs under names that end with ".txt". Only a plain file is
// looked into: a pipe gives its beginning once.
bool BeginsWithHeader(const std::string& path) {
  constexpr ChunkLimits kBeginning = {.readSize = 4096, .recordSize = 65536};
  if (!QFileInfo(QString::fromStdString(path)).isFile()) return false;
  try {
    InputFile file(path);
    ChunkReader reader([&](std::span<char> buffer) { return file.Read(buffer); }, kBeginning);
    return LooksLikeHeader(reader.ReadHeader().value_or(std::string()));
  } catch (const CohortError&) {
    return false;
  }
}

}  // namespace

bool IsCaseFileInput(const std::string& path) {
  const QString name = QString::fromStdString(path);
  if (QFileInfo(name).isDir()) return true;
  return name.endsWith(QStringLiteral(".txt"), Qt::CaseInsensitive) && !BeginsWithHeader(path);
}

CaseFileInput::CaseFileInput(const std::string& path) : text_(HeaderRecord()) {
  const QString name = QString::fromStdString(path);
  if (!QFileInfo(name).isDir()) {
    const Vse::CaseFileContents contents = Vse::ReadCaseFile(name, QLocale::system());
    if (contents.problem != Problem::None) {
      throw CohortError(path + ": " + Trouble(contents).toStdString());
    }
    files_.push_back(path);
    return;
  }
  const QDir folder(name);
  if (!folder.isReadable()) throw CohortError(path + ": the folder cannot be read");
  const QStringList found = folder.entryList({"*.txt"}, QDir::Files | QDir::System, QDir::Name);
  for (const QString& file : found) files_.push_back(folder.filePath(file).toStdString());
  if (files_.empty()) throw CohortError(path + ": the folder holds no case file (.txt)");
}

std::size_t CaseFileInput::Read(std::span<char> buffer) {
  if (given_ == text_.size() && !NextRecord()) return 0;
  const std::size_t count = std::min(buffer.size(), text_.size() - given_);
  std::copy_n(text_.begin() + static_cast<std::ptrdiff_t>(given_), count, buffer.begin());
  given_ += count;
  return count;
}

bool CaseFileInput::NextRecord() {
  if (next_ == files_.size()) return false;
  text_ = CaseRecordText(QString::fromStdString(files_[next_++]));
  given_ = 0;
  return true;
}

}  // namespace Cohort
