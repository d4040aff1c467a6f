// The panels "Patient" and "Results" of the main window. Their boxes show; they are not typed in.
#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <array>

#include "case/case_record.h"
#include "case/case_texts.h"
#include "platform/comments_box.h"

class PatientPanel : public QGroupBox {
  Q_OBJECT
 public:
  explicit PatientPanel(QWidget* parent = nullptr);

  // Name, date of birth, body weight and comments are greyed where they show a placeholder.
  void Show(const Patient& patient);
  void EnableBoxes();

 private:
  QLineEdit* name_;
  QLineEdit* sex_;
  QLineEdit* hip_;
  QLineEdit* dateOfBirth_;
  QLineEdit* bodyWeight_;
  CommentsBox* comments_;
};

class ResultsPanel : public QGroupBox {
  Q_OBJECT
 public:
  explicit ResultsPanel(QWidget* parent = nullptr);

  // A result without a text is hidden, labels included. Enables the boxes.
  void Show(const ResultTexts& results);

  // Greyed boxes show numbers that are not the case's. Captions and units stay as they are.
  void EnableBoxes(bool enabled);

 private:
  struct Row {
    QLineEdit* box = nullptr;
    QLabel* label = nullptr;
    QLabel* unit = nullptr;  // none for a ratio
  };
  std::array<Row, Sila::kResultCount> rows_;
};
