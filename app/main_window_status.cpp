// What the status line of the main window says.
#include <QFileInfo>

#include "app/main_window.h"
#include "case/case_entries.h"

namespace {

constexpr QStringView kCannotKeep = u"Unsaved work cannot be kept for the next start.";

}  // namespace

void MDIForm1::ShowStatus() {
  const QString& path = session_.FileInUse();
  fileLabel_->setText(Vse::OneLine(QFileInfo(path).fileName()));
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
