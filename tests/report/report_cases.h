// A case to print: the form's default measurements with a woman of 70 kg, her left hip, run through
// the model.
#pragma once

#include <QDate>
#include <QLocale>
#include <QString>

#include "case/case_record.h"
#include "case/case_texts.h"
#include "tests/support/default_inputs.h"

inline CaseRecord Computed(CaseRecord record) {
  Vse::RunModel(record);
  return record;
}

inline CaseRecord UsualCase() {
  CaseRecord record;
  record.data.patient = Vse::PatientFrom({.name = QStringLiteral("Novak Marija"),
                                          .sex = QStringLiteral("F"),
                                          .dateOfBirth = QStringLiteral("15.11.1956"),
                                          .bodyWeight = QStringLiteral("70"),
                                          .hip = QStringLiteral("L"),
                                          .comments = QStringLiteral("Control after two years")});
  record.data.inputs = DefaultInputs();
  record.data.inputs.bodyWeight = Sila::Kilograms{70.0};
  return Computed(record);
}

inline CaseRecord WithUnknownWeight() {
  CaseRecord record = UsualCase();
  record.data.patient.bodyWeight.clear();
  record.data.inputs.bodyWeight.reset();
  return Computed(record);
}

inline CaseRecord WithHip(std::optional<HipSide> hip) {
  CaseRecord record = UsualCase();
  record.data.patient.hip = hip;
  return record;
}

inline CaseRecord WithComments(const QString& comments) {
  CaseRecord record = UsualCase();
  record.data.patient.comments = comments;
  return record;
}

inline QDate PrintedDate() {
  return {2026, 11, 15};
}
inline QLocale German() {
  return {QLocale::German, QLocale::Germany};
}
inline QLocale American() {
  return {QLocale::English, QLocale::UnitedStates};
}
