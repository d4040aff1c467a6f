// The panels "Patient" and "Results" of the main window. Their boxes show; they are not typed in.
#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include "case/case_record.h"
#include "caseform/case_window.h"
#include "platform/comments_box.h"

class PatientPanel : public QGroupBox {
  Q_OBJECT
 public:
  explicit PatientPanel(QWidget* parent = nullptr);

  void SetBox(QString PatientTexts::*box, const QString& text, bool enabled);
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

  // Without a peak stress its box and its two labels are hidden.
  void SetResults(const ResultTexts& results);

 private:
  QLineEdit* rWb_;
  QLineEdit* thetaR_;
  QLineEdit* thetaPol_;
  QLineEdit* pmaxWb_;
  QLineEdit* pmax_;
  QLabel* pmaxLabel_;
  QLabel* pmaxUnit_;
};
