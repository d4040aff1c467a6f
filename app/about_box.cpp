// The About box: a column of texts beside the program's icon, and one button.
#include "app/about_box.h"

#include <QFont>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/tool_icons.h"

namespace {

constexpr int kTextWidth = 400;  // in units of the layout, about sixty letters to a line
constexpr int kIconSide = 96;

QLabel* Text(const QString& name, const QString& text) {
  auto* label = new QLabel(text);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setFixedWidth(kTextWidth);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

QLabel* ProductName() {
  QLabel* label = Text("lblProduct", QStringLiteral("TELMARION"));
  QFont font = label->font();
  font.setPointSizeF(font.pointSizeF() * 1.8);
  font.setBold(true);
  label->setFont(font);
  return label;
}

QLabel* Picture(const QWidget& window) {
  auto* label = new QLabel;
  label->setObjectName("imgIcon");
  label->setAccessibleName(QStringLiteral("TELMARION"));
  label->setPixmap(ApplicationPicture(kIconSide, window.devicePixelRatioF()));
  label->setAlignment(Qt::AlignTop);
  return label;
}

QVBoxLayout* Texts() {
  auto* column = new QVBoxLayout;
  column->setSpacing(8);
  column->addWidget(ProductName());
  column->addWidget(Text("lblVersion", QStringLiteral("Version " TELMARION_VERSION)));
  column->addSpacing(8);
  column->addWidget(
      Text("lblPurpose", QStringLiteral("Hip force and contact stress from measurements "
                                        "on a radiograph of the pelvis.")));
  column->addWidget(Text("lblAuthors", QStringLiteral("By the TELMARION developers")));
  column->addWidget(Text("lblLicence", QStringLiteral("Licence: MIT")));
  column->addSpacing(8);
  column->addWidget(Text("lblNote", QStringLiteral("For research and teaching. TELMARION is not a "
                                                   "certified medical device.")));
  return column;
}

}  // namespace

Form3::Form3(QWidget* parent) : QDialog(parent) {
  setObjectName("Form3");
  setWindowTitle(QStringLiteral("About TELMARION"));
  setModal(true);

  auto* ok = new QPushButton(QStringLiteral("OK"));
  ok->setObjectName("Command1");
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);

  auto* top = new QHBoxLayout;
  top->setSpacing(24);
  top->addWidget(Picture(*this));
  top->addLayout(Texts());

  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(24, 24, 24, 16);
  all->setSpacing(24);
  all->addLayout(top);
  all->addWidget(ok, 0, Qt::AlignRight);
  all->setSizeConstraint(QLayout::SetFixedSize);
}
