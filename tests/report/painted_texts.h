// A page that writes down the texts painted on it, blanks included: a reader of a PDF drops them.
#pragma once

#include <QBuffer>
#include <QPaintEngine>
#include <QPdfWriter>
#include <QStringList>

#include "platform/print_target.h"

class TextNotes final : public QPaintEngine {
 public:
  TextNotes() : QPaintEngine(QPaintEngine::AllFeatures) {}
  bool begin(QPaintDevice*) override { return true; }
  bool end() override { return true; }
  Type type() const override { return User; }
  void updateState(const QPaintEngineState&) override {}
  void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
  void drawPath(const QPainterPath&) override {}
  void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
  void drawTextItem(const QPointF&, const QTextItem& item) override { texts.append(item.text()); }

  QStringList texts;
};

class NotingTarget final : public PrintTarget {
 public:
  NotingTarget() : paper_(&out_) { out_.open(QIODevice::WriteOnly); }

  // In the order of painting.
  const QStringList& Texts() const { return paper_.notes.texts; }

  QPagedPaintDevice& Device() override { return paper_; }
  QString Check() override { return {}; }
  QString Deliver() override { return {}; }
  QString Refusal(const QString& reason) const override { return reason; }

 private:
  struct Paper final : QPdfWriter {
    using QPdfWriter::QPdfWriter;
    QPaintEngine* paintEngine() const override { return &notes; }
    mutable TextNotes notes;
  };

  QBuffer out_;
  Paper paper_;
};
