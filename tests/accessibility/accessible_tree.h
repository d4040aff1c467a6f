// The accessibility tree of a window, as a screen reader walks it.
#pragma once

#include <QAccessible>
#include <QString>
#include <QWidget>
#include <functional>

namespace accessible_tree {

inline QString NameOf(const QAccessibleInterface& thing) {
  return thing.text(QAccessible::Name);
}

// The thing and all above it, for a person who looks for it.
inline std::string PathOf(QAccessibleInterface* thing) {
  QString path;
  for (; thing != nullptr && thing->role() != QAccessible::Application; thing = thing->parent()) {
    const QString object = thing->object() == nullptr ? QString() : thing->object()->objectName();
    const QString role = QString::number(thing->role(), 16);
    path = "/" + role + " '" + NameOf(*thing) + "' " + object + path;
  }
  return path.toStdString();
}

// What is invisible is left out with all below it.
inline void Walk(QAccessibleInterface* thing,
                 const std::function<void(QAccessibleInterface&)>& visit) {
  if (thing == nullptr || !thing->isValid() || thing->state().invisible) return;
  visit(*thing);
  for (int i = 0; i < thing->childCount(); ++i) Walk(thing->child(i), visit);
}

inline void Walk(QWidget& window, const std::function<void(QAccessibleInterface&)>& visit) {
  Walk(QAccessible::queryAccessibleInterface(&window), visit);
}

}  // namespace accessible_tree
