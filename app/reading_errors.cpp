// From texts to the errors that the propagation takes, and to the settings.
#include "app/reading_errors.h"

#include <algorithm>
#include <string_view>
#include <variant>

#include "case/case_entries.h"
#include "case/case_places.h"
#include "case/number_text.h"

namespace {

using Uncertainty::Distribution;
using Uncertainty::kMagnification;

constexpr double kLeastCoverage = 50.0;  // per cent
constexpr double kMostCoverage = 99.9;   // leaves four of 8192 trials beyond either end

using Number = std::variant<double, EntryFault>;

Number ReadEntry(const QString& text) {
  const std::string bytes = text.trimmed().toStdString();
  const std::optional<double> number = Vse::ReadNumber(bytes);
  if (number) return *number;
  return Vse::IsTooLarge(bytes) ? EntryFault::TooLarge : EntryFault::NotANumber;
}

// Takes a number that fits into `value`; else says what is wrong.
template <class Fits>
std::optional<EntryFault> Take(const QString& text, EntryFault otherwise, Fits fits,
                               double& value) {
  const Number number = ReadEntry(text);
  if (const auto* fault = std::get_if<EntryFault>(&number)) return *fault;
  const double read = std::get<double>(number);
  if (!fits(read)) return otherwise;
  value = read;
  return std::nullopt;
}

// Nothing typed is no error.
std::optional<EntryFault> TakeU(const QString& text, double& u) {
  if (text.trimmed().isEmpty()) return std::nullopt;
  return Take(
      text, EntryFault::Negative, [](double x) { return x >= 0.0; }, u);
}

std::optional<EntryFault> TakeMagnification(const ErrorEntries& entries, CheckedErrors& checked) {
  Uncertainty::Source factor = {1.0, 0.0, entries.errors[kMagnification].distribution};
  std::optional<EntryFault> fault;
  const bool typed = !entries.magnification.trimmed().isEmpty();
  if (typed) {
    fault = Take(
        entries.magnification, EntryFault::NotAboveZero, [](double x) { return x > 0.0; },
        factor.value);
  }
  checked.u[kMagnification] = TakeU(entries.errors[kMagnification].u, factor.u);
  if (typed || factor.u > 0.0) checked.reading.magnification = factor;
  return fault;
}

// Of a text that a person may have changed in the file.
QString Kept(const QJsonValue& value, const QString& otherwise = {}) {
  return value.isString() ? Vse::OneLine(value.toString()) : otherwise;
}

}  // namespace

QString KeyOfSource(std::size_t source) {
  if (source == kMagnification) return QStringLiteral("magnification");
  const std::string_view key = Sila::kMeasurements[source].key;
  return QString::fromLatin1(key.data(), static_cast<qsizetype>(key.size()));
}

QString CaptionOfSource(std::size_t source) {
  if (source == kMagnification) return QStringLiteral("Magnification");
  return Vse::kWindowCaptions[source].text.toString();
}

QString MeaningOfSource(std::size_t source) {
  if (source == kMagnification) {
    return QStringLiteral("lengths on the picture over true lengths");
  }
  const std::string_view meaning = Sila::kMeasurements[source].meaning;
  return QString::fromUtf8(meaning);
}

Sila::Unit UnitHere(Sila::Kind kind) {
  return kind == Sila::Kind::Radius ? Sila::Unit::Centimetre : Sila::UnitsOf(kind).front();
}

QString UnitOfSource(std::size_t source) {
  if (source == kMagnification) return {};
  return Vse::UnitText(UnitHere(Sila::kMeasurements[source].kind())).trimmed().toString();
}

QString SpokenUnitOfSource(std::size_t source) {
  const QString unit = UnitOfSource(source);
  return unit == QStringLiteral("°") ? QStringLiteral("degrees") : unit;
}

QString FaultWords(EntryFault fault, const QLocale& locale) {
  switch (fault) {
    case EntryFault::NotANumber:
      return QStringLiteral("not a number");
    case EntryFault::TooLarge:
      return QStringLiteral("too large");
    case EntryFault::Negative:
      return QStringLiteral("negative");
    case EntryFault::NotAboveZero:
      return QStringLiteral("not above 0");
    case EntryFault::OutOfRange:
      break;
  }
  return QStringLiteral("not %1 to %2")
      .arg(Vse::NumberText(kLeastCoverage, locale), Vse::NumberText(kMostCoverage, locale));
}

bool CheckedErrors::IsGood() const {
  return !magnificationFault && !coverageFault &&
         std::none_of(u.begin(), u.end(), [](const auto& fault) { return fault.has_value(); });
}

CheckedErrors CheckErrors(const ErrorEntries& entries, const Sila::HipInputs& inputs) {
  CheckedErrors checked;
  checked.reading.values = inputs;
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    const std::size_t i = Sila::IndexOf(row.id);
    if (row.kind() == Sila::Kind::Weight && !inputs.bodyWeight) continue;
    Uncertainty::ReadingError& error = checked.reading.errors[i];
    error.distribution = entries.errors[i].distribution;
    checked.u[i] = TakeU(entries.errors[i].u, error.u);
    error.u = Sila::ToHeld(row.kind(), UnitHere(row.kind()), error.u);
  }
  checked.magnificationFault = TakeMagnification(entries, checked);
  const auto fits = [](double x) { return x >= kLeastCoverage && x <= kMostCoverage; };
  double coverage = 100.0 * checked.coverage;
  checked.coverageFault = Take(entries.coverage, EntryFault::OutOfRange, fits, coverage);
  checked.coverage = coverage / 100.0;
  return checked;
}

QString DistributionText(Distribution distribution) {
  switch (distribution) {
    case Distribution::Normal:
      return QStringLiteral("normal");
    case Distribution::Uniform:
      return QStringLiteral("uniform");
    case Distribution::Triangular:
      break;
  }
  return QStringLiteral("triangular");
}

QJsonObject SettingsOf(const ErrorEntries& entries) {
  QJsonObject settings;
  for (std::size_t i = 0; i < kSourceCount; ++i) {
    const ErrorEntry& entry = entries.errors[i];
    settings.insert(
        KeyOfSource(i),
        QJsonObject{{"u", entry.u}, {"distribution", DistributionText(entry.distribution)}});
  }
  settings.insert(QStringLiteral("coverage"), entries.coverage);
  return settings;
}

ErrorEntries ErrorsFrom(const QJsonObject& settings) {
  ErrorEntries entries;
  for (std::size_t i = 0; i < kSourceCount; ++i) {
    const QJsonObject kept = settings.value(KeyOfSource(i)).toObject();
    entries.errors[i].u = Kept(kept.value(QStringLiteral("u")));
    const QString name = kept.value(QStringLiteral("distribution")).toString();
    for (const Distribution each : kDistributions) {
      if (DistributionText(each) == name) entries.errors[i].distribution = each;
    }
  }
  entries.coverage = Kept(settings.value(QStringLiteral("coverage")), entries.coverage);
  return entries;
}
