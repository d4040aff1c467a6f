// The errors of readings as a user enters them, and their one check.
#pragma once

#include <QJsonObject>
#include <QLocale>
#include <QString>
#include <array>
#include <cstddef>
#include <optional>

#include "uncertainty/hip_uncertainty.h"

// What can be uncertain: the measurements, by Sila::Measurement, then the magnification.
inline constexpr std::size_t kSourceCount = Uncertainty::kReadingSources;

// Its name in the settings and of its controls, the caption of the case form, and what it is.
QString KeyOfSource(std::size_t source);
QString CaptionOfSource(std::size_t source);
QString MeaningOfSource(std::size_t source);

// The unit in which a measurement and its u stand here: lengths and the radius in cm, angles in
// degrees.
Sila::Unit UnitHere(Sila::Kind kind);

// The same as text, and for a screen reader, which may be silent on a sign; empty for the
// magnification.
QString UnitOfSource(std::size_t source);
QString SpokenUnitOfSource(std::size_t source);

struct ErrorEntry {
  QString u;  // empty: no error
  Uncertainty::Distribution distribution = Uncertainty::Distribution::Normal;
  bool operator==(const ErrorEntry&) const = default;
};

// Texts as typed.
struct ErrorEntries {
  std::array<ErrorEntry, kSourceCount> errors;
  QString magnification;  // empty: the lengths are true ones
  QString coverage = QStringLiteral("95");
  bool operator==(const ErrorEntries&) const = default;
};

enum class EntryFault { NotANumber, TooLarge, Negative, NotAboveZero, OutOfRange };

// What is wrong with an entry, in the few words that have room beside its box.
QString FaultWords(EntryFault fault, const QLocale& locale);

struct CheckedErrors {
  Uncertainty::HipReading reading;
  double coverage = 0.95;
  std::array<std::optional<EntryFault>, kSourceCount> u;
  std::optional<EntryFault> magnificationFault;
  std::optional<EntryFault> coverageFault;

  bool IsGood() const;
};

// Of the case with these measurements. The error of a body weight that is not known is not looked
// at. A u for the magnification alone means that the lengths are true but for a common factor
// about 1.
CheckedErrors CheckErrors(const ErrorEntries& entries, const Sila::HipInputs& inputs);

// What is kept between sessions: all but the magnification, which belongs to one picture.
QJsonObject SettingsOf(const ErrorEntries& entries);
ErrorEntries ErrorsFrom(const QJsonObject& settings);

// Of a distribution, in the window and in the settings.
QString DistributionText(Uncertainty::Distribution distribution);
inline constexpr std::array kDistributions = {Uncertainty::Distribution::Normal,
                                              Uncertainty::Distribution::Uniform,
                                              Uncertainty::Distribution::Triangular};
