// The controls beside the radiograph and their layout, from the scale at the top to what is done
// with the result at the bottom.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStringView>
#include <QTabWidget>
#include <QWidget>
#include <array>

#include "diagram/diagram_view.h"
#include "measuring/draft.h"
#include "measuring/error_entries.h"
#include "measuring/pelvis_drawing.h"
#include "platform/share_bars.h"
#include "platform/text_table.h"

namespace Measuring {

// A typed number with its caption and unit, which come and go together.
struct EntryControls {
  QLabel* caption = nullptr;
  QLineEdit* box = nullptr;
  QLabel* unit = nullptr;

  void SetVisible(bool visible) const;
};

struct MeasuringControls {
  QLabel* scaleName = nullptr;
  QLabel* scaleValue = nullptr;
  QLabel* scaleTodo = nullptr;
  std::array<EntryControls, kEntryCount> entries;
  TextTable* marks = nullptr;
  QComboBox* side = nullptr;
  QLabel* sideFound = nullptr;
  TextTable* measurements = nullptr;
  TextTable* results = nullptr;
  QLabel* notice = nullptr;
  Vizual::DiagramView* diagram = nullptr;
  std::array<EntryControls, kErrorCount> errors;
  QLabel* budgetTitle = nullptr;
  ShareBars* budget = nullptr;
  QPushButton* use = nullptr;
  QPushButton* savePicture = nullptr;
  // Below the radiograph.
  PelvisDrawing* drawing = nullptr;
  QLabel* instruction = nullptr;
};

// Makes the controls on `panel`, and those below the radiograph on `strip`, empty.
MeasuringControls MakeMeasuringControls(QWidget* panel, QWidget* strip);

// Beside the box of an error that cannot be used.
inline constexpr QStringView kWrongError = u"a number, 0 or more";

// Of the list of sides.
enum class SideChoice { AsFileSays, Left, Right };

}  // namespace Measuring
