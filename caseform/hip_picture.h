// The picture beside the entry boxes: pelvis and femur in frontal view with the dimensions that the
// form asks for. Drawn from lines at any size; it keeps its shape and a light ground of its own.
#pragma once

#include <QList>
#include <QWidget>
#include <array>
#include <cstddef>

#include "case/case_entries.h"
#include "caseform/dimension_marks.h"
#include "platform/picture_access.h"

class HipPicture : public QWidget {
  Q_OBJECT
  TELMARION_PICTURE

 public:
  explicit HipPicture(QWidget* parent = nullptr);

  // What points out a measurement: the centre-edge angle has two labels and three lines, every
  // other measurement one of each.
  QList<DimensionLine*> LinesOf(Sila::Measurement measurement) const;
  QList<DimensionLabel*> LabelsOf(Sila::Measurement measurement) const;

  // Red and wide, or black and thin.
  void SetHighlighted(Sila::Measurement measurement, bool highlighted);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Marks {
    QList<DimensionLine*> lines;
    QList<DimensionLabel*> labels;
  };
  void AddLine(Sila::Measurement measurement, const char* name, DimensionLine::Shape shape);
  void AddLabel(Sila::Measurement measurement, const char* name, const QString& text,
                QPointF centre, double height);
  void AddLengths();
  void AddAngles();
  void AddLabels();
  Marks& MarksOf(Sila::Measurement measurement) { return marks_[Sila::IndexOf(measurement)]; }
  const Marks& MarksOf(Sila::Measurement measurement) const {
    return marks_[Sila::IndexOf(measurement)];
  }
  void DrawMarks(QPainter& painter, double pixel, bool highlighted) const;

  std::array<Marks, Sila::kRadiographCount> marks_;
};
