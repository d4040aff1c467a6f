// One case as a record, as the bytes of its file and as the entries that are read from them.
#pragma once

#include <QByteArray>
#include <QLocale>

#include "case/case_entries.h"
#include "case/case_file.h"
#include "case/case_record.h"
#include "case/case_texts.h"
#include "tests/support/default_inputs.h"

inline CaseRecord DefaultCase() {
  CaseRecord record;
  record.data.patient = Vse::PatientFrom({.name = "Surname Given",
                                          .sex = "F",
                                          .dateOfBirth = "15.11.1956",
                                          .bodyWeight = "70",
                                          .hip = "L",
                                          .comments = "No"});
  record.data.inputs = DefaultInputs();
  record.data.inputs.bodyWeight = Sila::Kilograms{70.0};
  Vse::RunModel(record);
  return record;
}

// The degree sign is one byte, B0, in every code page.
inline const QByteArray kDefaultFile =
    "TELMARION                                        15.11.2026\r\n"
    "\n\r\n"
    "Name          : Surname Given\n\r\n"
    "Sex           : F\n\r\n"
    "Date of birth : 15.11.1956\n\r\n"
    "Body weight   : 70 kg\n\r\n"
    "Hip           : L\n\r\n"
    "Comments      : No\n\r\n"
    "\n\r\n"
    "lizm          = 10.4 cm\n\r\n"
    "xizm          = 0.5 cm\n\r\n"
    "zizm          = 6 cm\n\r\n"
    "Cizm          = 4.4 cm\n\r\n"
    "Hizm          = 16 cm\n\r\n"
    "zasuk         = 0 \xB0  \n\r\n"
    "theta-CE      = 30 \xB0  \n\r\n"
    "radius of head= 0.025 m \n\r\n"
    "\n\r\n"
    "R/Wb          = 2.812\n\r\n"
    "Theta-R       = 8.476 \xB0 \n\r\n"
    "Pmax/Wb       = 3006.761 m^-2\n\r\n"
    "Pmax = 2066847.58429341 Pa\n\r\n";

inline CaseEntries DefaultEntries() {
  CaseEntries entries;
  entries.surname = "Surname ";
  entries.firstName = "Given";
  entries.sex = Sex::Female;
  entries.dateOfBirth = "15.11.1956";
  entries.bodyWeight = "70";
  entries.hip = HipSide::Left;
  entries.comments = "No";
  entries.measurements = {{{"10.4", Sila::Unit::Centimetre},
                           {"0.5", Sila::Unit::Centimetre},
                           {"6", Sila::Unit::Centimetre},
                           {"4.4", Sila::Unit::Centimetre},
                           {"16", Sila::Unit::Centimetre},
                           {"0 ", Sila::Unit::Degree},
                           {"30 ", Sila::Unit::Degree},
                           {"0.025", Sila::Unit::Metre}}};
  return entries;
}

inline QByteArray Compose(const CaseRecord& record, const QLocale& locale = QLocale::c()) {
  return Vse::ComposeCaseFile(record, "15.11.2026", locale);
}
