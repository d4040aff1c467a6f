// Listing case files and writing each as a CSV record. Names of files are bytes all the way.
#include "batch/case_file_input.h"

#include <QLocale>
#include <QString>
#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "batch/chunk_reader.h"
#include "batch/header_row.h"
#include "batch/input_file.h"
#include "case/case_conversion.h"
#include "case/case_file.h"
#include "case/case_texts.h"
#include "case/code_page.h"
#include "case/number_text.h"
#include "columns/cohort_error.h"

namespace Cohort {

namespace {

using Problem = Vse::CaseFileContents::Problem;

constexpr std::string_view kEnding = ".txt";

// Before the measurements; after them comes the remark.
constexpr std::array kPatientColumns = {"file", "name", "sex", "dateOfBirth", "hip", "comments"};

bool IsFolder(const std::string& path) {
  std::error_code none;
  return std::filesystem::is_directory(path, none);
}

bool HasCaseFileName(std::string_view name) {
  const auto isSame = [](char c, char lower) { return c == lower || (c | 0x20) == lower; };
  return name.size() >= kEnding.size() &&
         std::equal(kEnding.begin(), kEnding.end(), name.end() - kEnding.size(),
                    [&](char lower, char c) { return isSame(c, lower); });
}

std::string CsvField(const std::string& field) {
  if (field.find_first_of(",\"\r\n") == std::string::npos) return field;
  std::string quoted = "\"";
  for (const char c : field) quoted.append(c == '"' ? 2 : 1, c);
  quoted += '"';
  return quoted;
}

// A spreadsheet would run it as a formula; an apostrophe makes it text.
std::string Harmless(std::string field) {
  if (!field.empty() && std::string_view("=+-@\t\r").find(field.front()) != std::string::npos) {
    field.insert(0, 1, '\'');
  }
  return field;
}

std::string Text(const QString& text) {
  return Harmless(text.toStdString());
}

// A number may have a sign.
std::string Number(const QString& text) {
  std::string field = text.trimmed().toStdString();
  return Vse::ReadNumber(field) ? field : Harmless(std::move(field));
}

std::string Record(const std::vector<std::string>& fields) {
  std::string record;
  for (const std::string& field : fields) {
    if (!record.empty()) record += ',';
    record += CsvField(field);
  }
  record += '\n';
  return record;
}

std::string HeaderRecord() {
  std::vector<std::string> names(kPatientColumns.begin(), kPatientColumns.end());
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) names.emplace_back(row.key);
  names.emplace_back("remark");
  return Record(names);
}

QString Trouble(const Vse::CaseFileContents& contents) {
  return contents.problem == Problem::NotCorrectFile ? QStringLiteral("Not correct file")
                                                     : contents.reason;
}

// What is in a case file, and the bytes that it was read from.
struct CaseFile {
  QByteArray bytes;
  Vse::CaseFileContents contents;
};

CaseFile ReadCaseFile(const std::string& path, const CaseCodePage& codePage) {
  const FileBeginning file = ReadBeginning(path, Vse::kLargestCaseFile + 1);
  if (!file.trouble.empty()) {
    Vse::CaseFileContents contents;
    contents.problem = Problem::Unreadable;
    contents.reason = QString::fromStdString(file.trouble);
    return {{}, contents};
  }
  const auto bytes = QByteArray::fromStdString(file.bytes);
  return {bytes, Vse::ParseCaseFile(bytes, codePage.name.c_str())};
}

// What a decoder makes of a byte that means nothing: a replacement or a control character of 8
// bits.
bool IsNoLetter(QChar c) {
  return c == QChar::ReplacementCharacter || (c >= QChar(0x80) && c <= QChar(0x9F));
}

// Spreadsheets save tables separated by tabs under names that end with ".txt". Only a plain file is
// looked into: a pipe gives its beginning once.
bool BeginsWithHeader(const std::string& path) {
  constexpr ChunkLimits kBeginning = {.readSize = 4096, .recordSize = 65536};
  std::error_code none;
  if (!std::filesystem::is_regular_file(path, none)) return false;
  try {
    InputFile file(path);
    ChunkReader reader([&](std::span<char> buffer) { return file.Read(buffer); }, kBeginning);
    return LooksLikeHeader(reader.ReadHeader().value_or(std::string()));
  } catch (const CohortError&) {
    return false;
  }
}

}  // namespace

CaseCodePage FindCodePage(const std::optional<std::string>& named) {
  const QLocale locale = QLocale::system();
  const bool assumed = !named && locale.language() == QLocale::C;
  return {named.value_or(Vse::CodePageOf(locale)), assumed};
}

bool IsCaseFileInput(const std::string& path) {
  return IsFolder(path) || (HasCaseFileName(path) && !BeginsWithHeader(path));
}

CaseFileInput::CaseFileInput(const std::string& path, CaseCodePage codePage)
    : path_(path), codePage_(std::move(codePage)), text_(HeaderRecord()) {
  if (IsFolder(path)) {
    ListFolder();
    return;
  }
  const Vse::CaseFileContents contents = ReadCaseFile(path, codePage_).contents;
  if (contents.problem != Problem::None) {
    throw CohortError(path + ": " + Trouble(contents).toStdString());
  }
  files_.push_back(path);
}

// Links that lead nowhere and pipes are kept: their rows tell what is wrong with them.
void CaseFileInput::ListFolder() {
  std::error_code trouble;
  for (std::filesystem::directory_iterator entry(path_, trouble), end; !trouble && entry != end;
       entry.increment(trouble)) {
    const std::string name = entry->path().filename();
    const bool isFolder = IsFolder(entry->path());
    const bool taken = HasCaseFileName(name) && !name.starts_with('.') && !isFolder;
    if (taken) {
      files_.push_back(std::filesystem::path(path_) / name);
    } else {
      passedOver_.push_back(isFolder ? name + '/' : name);
    }
  }
  if (trouble) throw CohortError(path_ + ": the folder cannot be read: " + trouble.message());
  if (files_.empty()) throw CohortError(path_ + ": the folder holds no case file (.txt)");
  std::sort(files_.begin(), files_.end());
  std::sort(passedOver_.begin(), passedOver_.end());
}

std::string CaseFileInput::PassedOver() const {
  constexpr std::size_t kMostNames = 5;
  if (passedOver_.empty()) return {};
  const std::size_t count = passedOver_.size();
  const std::size_t named = std::min(count, kMostNames);
  std::string sentence = path_ + ": ";
  sentence += count == 1 ? "1 entry is no case file (.txt) and is passed over: "
                         : std::to_string(count) +
                               " entries are no case files (.txt) and are passed over: ";
  for (std::size_t i = 0; i < named; ++i) sentence += (i == 0 ? "" : ", ") + passedOver_[i];
  if (count > named) sentence += " and " + std::to_string(count - named) + " more";
  return sentence;
}

void CaseFileInput::NoteLetters(const std::string& path, const QByteArray& bytes) {
  if (bytes.isValidUtf8()) return;
  inCodePage_.push_back(path);
  const QString text = Vse::DecodeText(bytes, codePage_.name.c_str());
  if (std::any_of(text.begin(), text.end(), IsNoLetter)) notInCodePage_.push_back(path);
}

// A file that cannot be read has no entries, and the remark tells why.
std::string CaseFileInput::CaseRecordText(const std::string& path) {
  const auto [bytes, contents] = ReadCaseFile(path, codePage_);
  const bool readable = contents.problem == Problem::None;
  if (readable) NoteLetters(path, bytes);
  const CaseEntries& entries = contents.entries;
  const PatientTexts patient = Vse::PatientTextsOf(Vse::PatientOf(entries, false));
  std::vector<std::string> fields = {Harmless(path)};
  if (readable) {
    fields.push_back(Text(contents.name.isEmpty() ? patient.name : contents.name));
    fields.push_back(Text(patient.sex));
    fields.push_back(Text(patient.dateOfBirth));
    fields.push_back(Text(patient.hip));
    fields.push_back(Text(patient.comments));
  } else {
    fields.resize(kPatientColumns.size());
  }
  for (const MeasurementEntry& entry : entries.measurements) fields.push_back(Number(entry.text));
  fields.push_back(Number(entries.bodyWeight));
  fields.push_back(readable ? std::string() : Text(Trouble(contents)));
  return Record(fields);
}

std::size_t CaseFileInput::FaultField() {
  return kPatientColumns.size() + Sila::kMeasurementCount;
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
  text_ = CaseRecordText(files_[next_++]);
  given_ = 0;
  return true;
}

}  // namespace Cohort
