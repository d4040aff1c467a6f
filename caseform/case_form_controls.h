// The controls of the case form and their layout.
#pragma once

#include <array>

#include "case/case_entries.h"

class CommentsBox;
class HipPicture;
class QComboBox;
class QDialog;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

struct MeasurementControls {
  QLineEdit* text = nullptr;
  QComboBox* unit = nullptr;
};

// All of them belong to their dialog.
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
  std::array<MeasurementControls, Sila::kRadiographCount> measurements;  // by Measurement
  QPushButton* ok = nullptr;
  QPushButton* cancel = nullptr;
  QPushButton* hidePicture = nullptr;
  QPushButton* showPicture = nullptr;
  QLabel* weightNotice = nullptr;  // hidden while there is nothing to say
  HipPicture* picture = nullptr;
};

// Fills the dialog with the controls and lays them out; boxes and option buttons are empty.
CaseFormControls BuildCaseFormControls(QDialog& form);

// The contents of a new form.
CaseEntries DefaultCaseEntries();
