// The About box: what this program is, which version, whose, and what it is not.
#pragma once

#include <QDialog>

class Form3 final : public QDialog {
 public:
  explicit Form3(QWidget* parent = nullptr);
};
