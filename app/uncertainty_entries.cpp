// Entries, faults and values between the controls and their data.
#include <QSignalBlocker>
#include <algorithm>

#include "app/uncertainty_controls.h"
#include "case/number_text.h"

namespace {

using Uncertainty::kMagnification;

void SetQuietly(QLineEdit* box, const QString& text) {
  const QSignalBlocker quiet(box);
  box->setText(text);
}

// A screen reader hears the words when it comes to the box.
void Describe(QLineEdit* box, std::optional<EntryFault> fault, const QLocale& locale) {
  const QString words = fault ? FaultWords(*fault, locale) : QString();
  const QString usual = box->toolTip();
  box->setAccessibleDescription(words.isEmpty() ? usual : words + QStringLiteral(". ") + usual);
}

void ShowFault(QLabel* label, std::optional<EntryFault> fault, const QLocale& locale) {
  label->setText(fault ? FaultWords(*fault, locale) : QString());
}

void SetVisible(const SourceControls& own, bool visible) {
  for (QWidget* widget :
       {static_cast<QWidget*>(own.caption), static_cast<QWidget*>(own.value),
        static_cast<QWidget*>(own.u), static_cast<QWidget*>(own.unit),
        static_cast<QWidget*>(own.distribution), static_cast<QWidget*>(own.fault)}) {
    widget->setVisible(visible);
  }
}

}  // namespace

ErrorEntries EntriesIn(const UncertaintyControls& controls) {
  ErrorEntries entries;
  for (std::size_t i = 0; i < kSourceCount; ++i) {
    const SourceControls& own = controls.sources[i];
    entries.errors[i].u = own.u->text();
    const int chosen = std::max(own.distribution->currentIndex(), 0);
    entries.errors[i].distribution = kDistributions[static_cast<std::size_t>(chosen)];
  }
  entries.magnification = controls.sources[kMagnification].valueEntry->text();
  entries.coverage = controls.coverage->text();
  return entries;
}

void ShowEntries(const UncertaintyControls& controls, const ErrorEntries& entries) {
  for (std::size_t i = 0; i < kSourceCount; ++i) {
    const SourceControls& own = controls.sources[i];
    const ErrorEntry& entry = entries.errors[i];
    SetQuietly(own.u, entry.u);
    const QSignalBlocker quiet(own.distribution);
    own.distribution->setCurrentText(DistributionText(entry.distribution));
  }
  SetQuietly(controls.sources[kMagnification].valueEntry, entries.magnification);
  SetQuietly(controls.coverage, entries.coverage);
}

void ShowErrorFaults(const UncertaintyControls& controls, const CheckedErrors& checked,
                     const QLocale& locale) {
  for (std::size_t i = 0; i < kSourceCount; ++i) {
    Describe(controls.sources[i].u, checked.u[i], locale);
    ShowFault(controls.sources[i].fault, checked.u[i], locale);
  }
  const SourceControls& magnification = controls.sources[kMagnification];
  Describe(magnification.valueEntry, checked.magnificationFault, locale);
  if (checked.magnificationFault) {
    ShowFault(magnification.fault, checked.magnificationFault, locale);
  }
  Describe(controls.coverage, checked.coverageFault, locale);
  ShowFault(controls.coverageFault, checked.coverageFault, locale);
}

void ShowValues(const UncertaintyControls& controls, const Sila::HipInputs& inputs,
                const QLocale& locale) {
  for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
    const std::size_t i = Sila::IndexOf(row.id);
    const double value =
        Sila::FromHeld(row.kind(), UnitHere(row.kind()), Sila::ValueOf(inputs, row));
    controls.sources[i].value->setText(Vse::NumberText(value, locale) + u' ' + UnitOfSource(i));
    if (row.kind() == Sila::Kind::Weight) {
      SetVisible(controls.sources[i], inputs.bodyWeight.has_value());
    }
  }
}
