// What goes out comes back: made-up numbers, dates, measures and cases, the same in every run.
#include <gtest/gtest.h>

#include <QRandomGenerator>
#include <array>
#include <chrono>
#include <cmath>
#include <numbers>
#include <vector>

#include "case/case_conversion.h"
#include "case/case_file.h"
#include "case/date_text.h"
#include "case/kept_work.h"
#include "case/number_text.h"

namespace {

const QList<QLocale>& AllLocales() {
  static const QList<QLocale> locales =
      QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
  return locales;
}

// One of each code page, with either separator.
const std::array<const char*, 7> kFileLocales{"C",     "de_DE", "sl_SI", "ru_RU",
                                              "el_GR", "tr_TR", "lv_LV"};

// Of any magnitude that can be read, either sign.
double RandomNumber(QRandomGenerator& random) {
  const double magnitude = std::pow(10.0, random.generateDouble() * 600.0 - 300.0);
  return random.bounded(2) == 0 ? magnitude : -magnitude;
}

TEST(NumberProperty, AnyNumberComesBackToFifteenDigitsInEveryLocale) {
  QRandomGenerator random(20261115);
  ASSERT_GT(AllLocales().size(), 500);
  for (const QLocale& locale : AllLocales()) {
    for (int round = 0; round < 20; ++round) {
      const double value = RandomNumber(random);
      const QString text = Vse::NumberText(value, locale);
      const auto back = Vse::ReadNumber(text.toStdString());
      ASSERT_TRUE(back) << text.toStdString();
      ASSERT_LE(std::abs(*back - value), 5.01e-15 * std::abs(value)) << text.toStdString();
      ASSERT_EQ(Vse::NumberText(*back, locale), text);
      ASSERT_EQ(Vse::ReadNumber(QString(text).replace(u',', u'.').toStdString()), back);
      ASSERT_EQ(Vse::ReadNumber(QString(text).replace(u'.', u',').toStdString()), back);
    }
  }
}

QDate RandomDate(QRandomGenerator& random) {
  return QDate(1900, 1, 1).addDays(random.bounded(60000));
}

TEST(DateProperty, AnyDateIsADateInTheShortFormOfEveryLocale) {
  QRandomGenerator random(20261115);
  for (const QLocale& locale : AllLocales()) {
    for (int round = 0; round < 4; ++round) {
      const QDate date = RandomDate(random);
      const QString text = Vse::ShortDate(date, locale);
      EXPECT_TRUE(Vse::IsValidDate(text, locale))
          << text.toStdString() << " in " << locale.name().toStdString();
    }
  }
}

TEST(DateProperty, DigitsAreADateWhereTheCalendarHasIt) {
  using std::chrono::year_month_day;
  QRandomGenerator random(20261115);
  const QLocale dayFirst("de_DE");
  const QLocale monthFirst("en_US");
  for (int round = 0; round < 2000; ++round) {
    const int day = random.bounded(34);
    const int month = random.bounded(15);
    const int year = 1890 + random.bounded(220);
    const bool exists =
        year_month_day(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                       std::chrono::day(static_cast<unsigned>(day)))
            .ok();
    const QString separator = QStringList{".", "/", "-"}[random.bounded(3)];
    const auto joined = [&](int first, int second) {
      return QString::number(first) + separator + QString::number(second) + separator +
             QString::number(year);
    };
    ASSERT_EQ(Vse::IsValidDate(joined(day, month), dayFirst), exists) << round;
    ASSERT_EQ(Vse::IsValidDate(joined(month, day), monthFirst), exists) << round;
  }
}

// A unit of a measure, and how many of the shown unit (cm, degrees, m) make one.
struct Unit {
  QStringView text;
  double shown;
};

std::vector<Unit> UnitsOf(Measure measure) {
  if (Vse::IsAngle(measure)) {
    return {{Vse::kDegree, 1.0}, {Vse::kRadian, 180.0 / std::numbers::pi}};
  }
  if (measure == Measure::HeadRadius) {
    return {{Vse::kMillimetre, 0.001}, {Vse::kCentimetre, 0.01}, {Vse::kMetre, 1.0}};
  }
  return {{Vse::kMillimetre, 0.1}, {Vse::kCentimetre, 1.0}};
}

// As typed: a few digits, either separator.
QString RandomMeasureText(QRandomGenerator& random) {
  const QString text = QString::number(random.bounded(1, 1'000'000) / 1000.0, 'g', 10);
  return random.bounded(2) == 0 ? text : QString(text).replace(u'.', u',');
}

Unit RandomUnit(QRandomGenerator& random, Measure measure) {
  const std::vector<Unit> units = UnitsOf(measure);
  return units[static_cast<std::size_t>(random.bounded(static_cast<int>(units.size())))];
}

TEST(UnitProperty, WhatIsTypedInAnyUnitIsShownInTheHeldOne) {
  QRandomGenerator random(20261115);
  for (int round = 0; round < 2000; ++round) {
    CaseEntries typed;
    typed.sex = CaseEntries::Sex::Male;
    typed.hip = CaseEntries::Hip::Left;
    std::array<double, kMeasureCount> expected{};
    for (std::size_t i = 0; i < kMeasureCount; ++i) {
      const Unit unit = RandomUnit(random, static_cast<Measure>(i));
      typed.measures[i] = {RandomMeasureText(random), unit.text.toString()};
      expected[i] = Vse::ReadNumber(typed.measures[i].text.toStdString()).value() * unit.shown;
    }
    const auto held = Vse::DataOf(typed, false);
    ASSERT_TRUE(held);
    const CaseEntries shown = Vse::EntriesOf(*held, QLocale("sl_SI"), {});
    for (std::size_t i = 0; i < kMeasureCount; ++i) {
      const double value = Vse::ReadNumber(shown.measures[i].text.toStdString()).value();
      ASSERT_NEAR(value, expected[i], 1e-14 * expected[i]) << i << ' ' << round;
    }
    const auto again = Vse::DataOf(shown, false);
    ASSERT_TRUE(again);
    ASSERT_TRUE(Vse::IsSameCase(*held, *again)) << round;
  }
}

// Text of any kind that can stand in a box: letters of many scripts, signs, pairs of surrogates.
QString RandomText(QRandomGenerator& random, bool lines) {
  static const QList<QString> kPieces = {"a", "Z",  " ", "7",  "ü", "č", "Ж", "Ω", "ş", "ķ",
                                         "א", "字", "😀", "\"", ",", ";", "<", "&", "°", "'"};
  QString text;
  const int length = random.bounded(12);
  for (int i = 0; i < length; ++i) {
    text += lines && random.bounded(6) == 0 ? QStringLiteral("\n")
                                            : kPieces[random.bounded(kPieces.size())];
  }
  return text;
}

CaseEntries RandomEntries(QRandomGenerator& random) {
  CaseEntries entries;
  entries.surname = RandomText(random, false);
  entries.firstName = RandomText(random, false);
  entries.sex = static_cast<CaseEntries::Sex>(random.bounded(3));
  entries.dateOfBirth = RandomText(random, false);
  entries.bodyWeight = random.bounded(4) == 0 ? QString() : RandomMeasureText(random);
  entries.hip = static_cast<CaseEntries::Hip>(random.bounded(3));
  entries.comments = RandomText(random, true);
  for (std::size_t i = 0; i < kMeasureCount; ++i) {
    const Unit unit = RandomUnit(random, static_cast<Measure>(i));
    entries.measures[i] = {RandomMeasureText(random), unit.text.toString()};
  }
  return entries;
}

CaseRecord RandomRecord(QRandomGenerator& random) {
  CaseRecord record;
  static_cast<CaseData&>(record) = Vse::DataOf(RandomEntries(random), false).value();
  Vse::RunModel(record);
  return record;
}

// The case that a file holds: a sex or a side that was not chosen reads as the second, and of
// several blanks in a name the one before its last word counts.
CaseData AsRead(CaseData data, const Vse::CaseFileContents& file) {
  PatientTexts& patient = data.patient;
  patient.sex = patient.sex == u"M" ? "M" : "F";
  patient.hip = patient.hip == u"L" ? "L" : "D";
  EXPECT_EQ(file.name, patient.name == Vse::kUnknown ? QString() : patient.name);
  const auto name = Vse::SplitName(patient.name);
  patient.name = name ? Vse::ComposeName(name->surname, name->firstName) : Vse::kUnknown.toString();
  return data;
}

// Whatever the form can confirm comes back from its file, also when the line ends were changed.
TEST(CaseFileProperty, AnyConfirmedCaseSurvivesWritingAndReading) {
  QRandomGenerator random(20261115);
  for (int round = 0; round < 2000; ++round) {
    const QLocale locale(kFileLocales[static_cast<std::size_t>(round) % kFileLocales.size()]);
    const CaseRecord record = RandomRecord(random);
    const QByteArray own = Vse::ComposeCaseFile(record, "15.11.2026", locale);
    const QByteArray lf = QByteArray(own).replace("\n\r\n", "\n").replace("\r\n", "\n");
    const QByteArray crLf = QByteArray(lf).replace("\n", "\r\n");
    for (const QByteArray& bytes : {own, lf, crLf}) {
      const Vse::CaseFileContents read = Vse::ParseCaseFile(bytes, locale);
      ASSERT_EQ(read.problem, Vse::CaseFileContents::Problem::None) << read.reason.toStdString();
      const auto back = Vse::DataOf(read.entries, false);
      ASSERT_TRUE(back);
      ASSERT_TRUE(Vse::IsSameCase(*back, AsRead(record, read))) << bytes.toStdString();
    }
  }
}

TEST(KeptWorkProperty, AnyWorkComesBackToTheLastBit) {
  QRandomGenerator random(20261115);
  for (int round = 0; round < 1000; ++round) {
    KeptWork work;
    work.file = RandomText(random, false);
    if (random.bounded(2) == 0) work.entries = RandomEntries(random);
    if (random.bounded(2) == 0) {
      work.data = RandomRecord(random);
      for (std::size_t i = 0; i < kMeasureCount; ++i) {
        Vse::SetValue(work.data->geometry, static_cast<Measure>(i), RandomNumber(random));
      }
      work.data->bodyWeight = RandomNumber(random);
    }
    ASSERT_EQ(Vse::ParseKeptWork(Vse::ComposeKeptWork(work)), work) << round;
  }
}

}  // namespace
