// The accessible role of our pictures.
#include "platform/picture_access.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QMetaObject>
#include <QWidget>

namespace {

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
  const bool picture = object->metaObject()->indexOfClassInfo("picture") >= 0;
  if (!picture || !object->isWidgetType()) return nullptr;
  return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Graphic);
}

}  // namespace

void TellPictures() {
  QAccessible::installFactory(MakeInterface);  // Qt takes it once
}
