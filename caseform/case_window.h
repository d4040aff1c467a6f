// What the run from OK to results needs of the window that shows the case. The main window is one.
#pragma once

#include <QString>
#include <QStringList>

#include "case/case_record.h"
#include "case/result_texts.h"
#include "diagram/hip_diagram.h"

class QWidget;

class CaseWindow {
 public:
  CaseWindow() = default;
  CaseWindow(const CaseWindow&) = delete;
  CaseWindow& operator=(const CaseWindow&) = delete;
  virtual ~CaseWindow() = default;

  // The widget that messages of the run belong to.
  virtual QWidget* Widget() = 0;

  // Frames, labels and boxes of patient and results can be used from now on.
  virtual void EnablePanels() = 0;

  // There is a case that the 3D view can show.
  virtual void MarkCaseToShow() = 0;

  // The record holds a confirmed case and the form is hidden. What follows may wait for the user,
  // who may have to read why the model refuses the case.
  virtual void CaseConfirmed() = 0;

  // An empty diagram with a solid pen, its labels hidden, and no captions.
  virtual void ClearCharts() = 0;

  // Fills the patient panel. A box that gets a placeholder is disabled where `CopyPatientToPanel`
  // says.
  virtual void SetPatientBox(QString PatientTexts::*box, const QString& text, bool enabled) = 0;

  virtual void SetResults(const ResultTexts& results) = 0;

  // The model has refused the case: what the results panel shows is not of this case, and is grey
  // until SetResults.
  virtual void RefuseResults() = 0;

  // Where the diagram is drawn on screen.
  virtual Vizual::Target Diagram() = 0;

  // Captions beside the diagram, one a line.
  virtual void SetCaptions(const QStringList& captions) = 0;
};
