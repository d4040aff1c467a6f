// What the accessibility bus learns about a list.
#include "platform/choice_list.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QString>
#include <QStringList>

namespace {

class ListInterface final : public QAccessibleWidget {
 public:
  explicit ListInterface(ChoiceList* list) : QAccessibleWidget(list, QAccessible::ComboBox) {}

  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Value ? List().currentText() : QAccessibleWidget::text(kind);
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    const bool unfolded = List().view()->isVisible();
    state.hasPopup = true;
    state.expandable = true;
    state.expanded = unfolded;
    state.collapsed = !unfolded;
    return state;
  }

  // The entries, whether the list is unfolded or not.
  int childCount() const override { return 1; }
  QAccessibleInterface* child(int index) const override { return index == 0 ? Entries() : nullptr; }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child == Entries() ? 0 : -1;
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    return Entries()->rect().contains(x, y) && List().view()->isVisible() ? Entries() : nullptr;
  }

  QStringList actionNames() const override { return {showMenuAction(), pressAction()}; }
  void doAction(const QString& action) override {
    if (action != showMenuAction() && action != pressAction()) return;
    if (List().view()->isVisible()) return List().hidePopup();
    List().showPopup();
  }

 private:
  ChoiceList& List() const { return *static_cast<ChoiceList*>(widget()); }
  QAccessibleInterface* Entries() const {
    return QAccessible::queryAccessibleInterface(List().view());
  }
};

QAccessibleInterface* MakeInterface(const QString& className, QObject* object) {
  if (className != QLatin1String("ChoiceList")) return nullptr;
  auto* list = qobject_cast<ChoiceList*>(object);
  return list == nullptr ? nullptr : new ListInterface(list);  // owned by Qt
}

}  // namespace

ChoiceList::ChoiceList(const QString& accessibleName, QWidget* parent) : QComboBox(parent) {
  // Qt takes it only once. It must come before the name is set, which creates the interface.
  QAccessible::installFactory(MakeInterface);
  setAccessibleName(accessibleName);
  view()->setAccessibleName(accessibleName);
  // Qt marks the entry when the list is unfolded; a screen reader looks before that.
  connect(this, &QComboBox::currentIndexChanged, this,
          [this](int row) { view()->setCurrentIndex(model()->index(row, modelColumn())); });
}
