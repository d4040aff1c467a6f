// Any bytes as a case file: refused with a reason, or a case that writing and reading keep. With
// other line ends a written case is kept too, or refused where it is in doubt.
#include <array>
#include <cstddef>
#include <cstdint>

#include "case/case_conversion.h"
#include "case/case_file.h"
#include "case/entry_check.h"
#include "tests/fuzz/require.h"

namespace {

using Problem = Vse::CaseFileContents::Problem;

// One locale of each code page, with either separator.
const QLocale& LocaleFor(std::size_t size) {
  static const std::array locales{QLocale("C"),     QLocale("de_DE"), QLocale("sl_SI"),
                                  QLocale("ru_RU"), QLocale("el_GR"), QLocale("tr_TR"),
                                  QLocale("lv_LV")};
  return locales[size % locales.size()];
}

void CheckOtherLineEnds(const CaseData& data, const QByteArray& file, const QLocale& locale) {
  const QByteArray lf = QByteArray(file).replace("\n\r\n", "\n").replace("\r\n", "\n");
  for (const QByteArray& bytes : {lf, QByteArray(lf).replace("\n", "\r\n")}) {
    const Vse::CaseFileContents again = Vse::ParseCaseFile(bytes, locale);
    if (again.problem == Problem::Unreadable) continue;
    const auto back = Vse::CheckEntries(again.entries, false, QLocale::c()).data;
    Require(back && Vse::IsSameCase(data, *back), "other line ends never make another case");
  }
}

void CheckRoundTrip(const CaseData& data, const QLocale& locale) {
  CaseRecord record;
  record.data = data;
  Vse::RunModel(record);
  const QByteArray file = Vse::ComposeCaseFile(record, "15.11.2026", locale);
  const Vse::CaseFileContents again = Vse::ParseCaseFile(file, locale);
  Require(again.problem == Problem::None, "a written case file is read");
  const auto back = Vse::CheckEntries(again.entries, false, QLocale::c()).data;
  Require(back.has_value(), "the numbers of a written case file are numbers");
  Require(Vse::IsSameCase(data, *back), "a written case file reads to the same case");
  CheckOtherLineEnds(data, file, locale);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const QLocale& locale = LocaleFor(size);
  const Vse::CaseFileContents contents = Vse::ParseCaseFile(bytes, locale);
  Require((contents.problem == Problem::Unreadable) != contents.reason.isEmpty(),
          "an unreadable file has a reason");
  if (contents.problem != Problem::None) return 0;
  if (const auto read = Vse::CheckEntries(contents.entries, false, QLocale::c()).data)
    CheckRoundTrip(*read, locale);
  return 0;
}
