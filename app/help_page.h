// One page of the help: text and drawings from the help file, in the colours of the desktop.
#pragma once

#include <QTextBrowser>
#include <QUrl>
#include <QVariant>

class QByteArray;
class QHelpEngineCore;
class QImage;

class HelpPage final : public QTextBrowser {
 public:
  // `engine` must live as long as pages are loaded from it.
  explicit HelpPage(const QHelpEngineCore& engine, QWidget* parent = nullptr);

  // Text and drawings `percent` of their usual size.
  void SetZoom(int percent);

  QVariant loadResource(int type, const QUrl& name) override;

 protected:
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Restyle();
  int LineWidth() const;
  QSize PixelsOf(QSizeF usual) const;
  QImage Drawing(const QByteArray& svg) const;
  QImage ProgramPicture(const QByteArray& png) const;

  const QHelpEngineCore& engine_;
  double usualPoints_;
  double zoom_ = 1.0;
};
