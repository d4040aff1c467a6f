// What the status line of the main window says.
#include <QFileInfo>
#include <QFontMetrics>

#include "app/main_window.h"
#include "case/case_entries.h"

namespace {

constexpr QStringView kCannotKeep = u"Unsaved work cannot be kept for the next start.";

}  // namespace

void MDIForm1::ShowStatus() {
  constexpr int kNameLetters = 40;
  const QString& path = session_.FileInUse();
  const QFontMetrics metrics = fileLabel_->fontMetrics();
  fileLabel_->setText(metrics.elidedText(Vse::OneLine(QFileInfo(path).fileName()), Qt::ElideMiddle,
                                         kNameLetters * metrics.averageCharWidth()));
  fileLabel_->setToolTip(path);
  fileLabel_->setAccessibleName(QStringLiteral("File in use: ") +
                                (path.isEmpty() ? QStringLiteral("none") : path));
  unsavedLabel_->setVisible(session_.NeedsSaving());
  const QString notice = Notice();
  noticeLabel_->setText(notice);
  noticeLabel_->setToolTip(notice);
}

QString MDIForm1::Notice() const {
  QStringList notices;
  if (form_ && form_->isVisible()) notices << form_->WeightNotice();
  if (cannotKeep_) notices << kCannotKeep.toString();
  notices.removeAll(QString());
  return notices.join(u' ');
}
