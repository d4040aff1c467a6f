// The controls of the window on uncertainty and their layout: entries on the left, results on the
// right.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>
#include <array>

#include "app/reading_errors.h"
#include "platform/share_bars.h"
#include "platform/text_table.h"

// One line of the entries.
struct SourceControls {
  QLabel* caption = nullptr;
  QLabel* value = nullptr;          // of the case; none for the magnification
  QLineEdit* valueEntry = nullptr;  // of the magnification alone
  QLineEdit* u = nullptr;
  QLabel* unit = nullptr;
  QComboBox* distribution = nullptr;
  QLabel* fault = nullptr;  // what is wrong with an entry of the line
};

struct UncertaintyControls {
  std::array<SourceControls, kSourceCount> sources;
  QLineEdit* coverage = nullptr;
  QLabel* coverageFault = nullptr;
  TextTable* results = nullptr;
  QLabel* notice = nullptr;
  QLabel* budgetTitle = nullptr;
  ShareBars* budget = nullptr;
  QPushButton* copy = nullptr;
  QPushButton* print = nullptr;
};

// Makes them inside `content`, empty.
UncertaintyControls MakeUncertaintyControls(QWidget* content, const QLocale& locale);

// What is typed and chosen, and back.
ErrorEntries EntriesIn(const UncertaintyControls& controls);
void ShowEntries(const UncertaintyControls& controls, const ErrorEntries& entries);

// Words beside a wrong entry, which its box says to a screen reader as well.
void ShowErrorFaults(const UncertaintyControls& controls, const CheckedErrors& checked,
                     const QLocale& locale);

// The values of the case; the line of a body weight that is not known is put away.
void ShowValues(const UncertaintyControls& controls, const Sila::HipInputs& inputs,
                const QLocale& locale);
