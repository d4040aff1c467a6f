// The controls of the case form and where they stand.
#pragma once

#include <array>

#include "case/case_entries.h"

class CommentsBox;
class HipPicture;
class QComboBox;
class QDialog;
class QLineEdit;
class QPushButton;
class QRadioButton;

struct MeasureControls {
  QLineEdit* text = nullptr;
  QComboBox* unit = nullptr;
};

// All of them belong to the dialog that they stand in.
struct CaseFormControls {
  QLineEdit* surname = nullptr;
  QLineEdit* firstName = nullptr;
  QRadioButton* male = nullptr;
  QRadioButton* female = nullptr;
  QLineEdit* dateOfBirth = nullptr;
  QLineEdit* bodyWeight = nullptr;
  QRadioButton* left = nullptr;
  QRadioButton* right = nullptr;
  CommentsBox* comments = nullptr;
  std::array<MeasureControls, kMeasureCount> measures;
  QPushButton* ok = nullptr;
  QPushButton* cancel = nullptr;
  QPushButton* hidePicture = nullptr;
  QPushButton* showPicture = nullptr;
  HipPicture* picture = nullptr;
};

// Fills the dialog with the controls and lays them out; boxes and option buttons are empty.
CaseFormControls BuildCaseFormControls(QDialog& form);

// What stands in a new form.
CaseEntries DefaultCaseEntries();
