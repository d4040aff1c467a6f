// What goes out comes back: made-up numbers, dates, measures and cases, the same in every run.
#include <gtest/gtest.h>

#include <QRandomGenerator>
#include <array>
#include <chrono>
#include <cmath>
#include <numbers>
#include <optional>

#include "case/case_conversion.h"
#include "case/case_file.h"
#include "case/case_texts.h"
#include "case/date_text.h"
#include "case/entry_check.h"
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

// How many of the shown unit (cm, degrees, m) make one of another.
double ShownPer(Sila::Kind kind, Sila::Unit unit) {
  const bool radius = kind == Sila::Kind::Radius;
  switch (unit) {
    case Sila::Unit::Millimetre:
      return radius ? 0.001 : 0.1;
    case Sila::Unit::Centimetre:
      return radius ? 0.01 : 1.0;
    case Sila::Unit::Radian:
      return 180.0 / std::numbers::pi;
    default:
      return 1.0;
  }
}

// As typed: a few digits, either separator.
QString RandomMeasureText(QRandomGenerator& random) {
  const QString text = QString::number(random.bounded(1, 1'000'000) / 1000.0, 'g', 10);
  return random.bounded(2) == 0 ? text : QString(text).replace(u'.', u',');
}

Sila::Unit RandomUnit(QRandomGenerator& random, Sila::Kind kind) {
  const auto units = Sila::UnitsOf(kind);
  return units[static_cast<std::size_t>(random.bounded(static_cast<int>(units.size())))];
}

std::optional<CaseData> DataOf(const CaseEntries& entries) {
  return Vse::CheckEntries(entries, false, QLocale::c()).data;
}

TEST(UnitProperty, WhatIsTypedInAnyUnitIsShownInTheHeldOne) {
  QRandomGenerator random(20261115);
  for (int round = 0; round < 2000; ++round) {
    CaseEntries typed;
    typed.sex = Sex::Male;
    typed.hip = HipSide::Left;
    std::array<double, Sila::kRadiographCount> expected{};
    for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
      const Sila::Unit unit = RandomUnit(random, row.kind());
      typed[row.id] = {RandomMeasureText(random), unit};
      expected[Sila::IndexOf(row.id)] =
          Vse::ReadNumber(typed[row.id].text.toStdString()).value() * ShownPer(row.kind(), unit);
    }
    const auto held = DataOf(typed);
    if (!held) continue;  // an angle of more than a full turn in radians
    const CaseEntries shown = Vse::EntriesOf(*held, QLocale("sl_SI"), {});
    for (std::size_t i = 0; i < expected.size(); ++i) {
      const double value = Vse::ReadNumber(shown.measurements[i].text.toStdString()).value();
      ASSERT_NEAR(value, expected[i], 1e-14 * expected[i]) << i << ' ' << round;
    }
    const auto again = DataOf(shown);
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

template <class Choice>
std::optional<Choice> RandomChoice(QRandomGenerator& random) {
  const int number = random.bounded(3);
  return number == 0 ? std::nullopt : std::optional(static_cast<Choice>(number - 1));
}

// Entries that the form confirms: angles within a turn, dates that exist.
CaseEntries RandomEntries(QRandomGenerator& random) {
  static const QList<QString> kDates = {"", "1956", "1956-11-15", "15.11.1956"};
  CaseEntries entries;
  entries.surname = RandomText(random, false);
  entries.firstName = RandomText(random, false);
  entries.sex = RandomChoice<Sex>(random);
  entries.dateOfBirth = kDates[random.bounded(kDates.size())];
  entries.bodyWeight = random.bounded(4) == 0 ? QString() : RandomMeasureText(random);
  entries.hip = RandomChoice<HipSide>(random);
  entries.comments = RandomText(random, true);
  for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
    const Sila::Unit unit = RandomUnit(random, row.kind());
    const bool radians = unit == Sila::Unit::Radian;
    entries[row.id] = {radians ? QStringLiteral("1.25") : RandomMeasureText(random), unit};
  }
  return entries;
}

CaseRecord RandomRecord(QRandomGenerator& random) {
  CaseRecord record;
  record.data = DataOf(RandomEntries(random)).value();
  Vse::RunModel(record);
  return record;
}

// The case that a file holds: a sex or a side that was not chosen reads as the second, and of
// several blanks in a name the one before its last word counts.
CaseData AsRead(CaseData data, const Vse::CaseFileContents& file) {
  Patient& patient = data.patient;
  patient.sex = patient.sex.value_or(Sex::Female);
  patient.hip = patient.hip.value_or(HipSide::Right);
  EXPECT_EQ(file.name, patient.name);
  const auto name = Vse::SplitName(patient.name);
  patient.name = name ? Vse::ComposeName(name->surname, name->firstName) : QString();
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
      const auto back = DataOf(read.entries);
      ASSERT_TRUE(back);
      ASSERT_TRUE(Vse::IsSameCase(*back, AsRead(record.data, read))) << bytes.toStdString();
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
      work.data = RandomRecord(random).data;
      for (const Sila::MeasurementRow& row : Sila::kMeasurements) {
        if (row.id == Sila::Measurement::BodyWeight && work.data->weightUnknown()) continue;
        Sila::SetValue(work.data->inputs, row, RandomNumber(random));
      }
    }
    ASSERT_EQ(Vse::ParseKeptWork(Vse::ComposeKeptWork(work)), work) << round;
  }
}

}  // namespace
