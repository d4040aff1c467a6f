// The program as a test runs it: the real windows and files, with the doors to the outside laid
// out.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>

#include "app/main_window.h"
#include "tests/support/recording_file_dialog.h"
#include "tests/support/recording_message_door.h"
#include "tests/support/recording_print_dialog.h"

class RunningProgram {
 public:
  explicit RunningProgram(const QLocale& locale = QLocale::c(),
                          const QStringList& helpFolders = {TELMARION_HELP_DIR},
                          const QString& recoveryFolder = {}, const QString& settingsFile = {},
                          const std::string& decoder = {})
      : window({messages,
                files,
                printers,
                [] { return QDate(2026, 11, 15); },
                locale,
                helpFolders,
                recoveryFolder,
                settingsFile,
                {decoder, {}}}) {
    window.show();
  }

  RecordingMessageDoor messages;
  RecordingFileDialog files;
  RecordingPrintDialog printers;
  QTemporaryDir folder;
  MDIForm1 window;

  Form1& Form() { return *window.CaseForm(); }
  bool FormIsOpen() { return window.CaseForm() != nullptr && Form().isVisible(); }

  // A control of the case form, or of the main window, by its name.
  template <class Widget>
  Widget* InForm(const char* name) {
    auto* widget = Form().findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  template <class Widget>
  Widget* InWindow(const char* name) {
    auto* widget = window.findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }

  QString Panel(const char* name) { return InWindow<QLineEdit>(name)->text(); }
  QString Entry(const char* name) { return InForm<QLineEdit>(name)->text(); }

  void Type(const char* box, const QString& text) {
    auto* edit = InForm<QLineEdit>(box);
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
  }
  void Choose(const char* option) { InForm<QRadioButton>(option)->click(); }
  void ChooseUnit(const char* list, const QString& unit) {
    InForm<QComboBox>(list)->setCurrentText(unit);
  }
  void PressOk() { InForm<QAbstractButton>("Command1")->click(); }
  void PressCancel() { InForm<QAbstractButton>("Command2")->click(); }
  void Command(const char* action) { InWindow<QAction>(action)->trigger(); }

  // A confirmed case: the default entries, with a body weight of 70 kg unless told otherwise.
  void ConfirmDefaultCase(const QString& weight = QStringLiteral("70")) {
    window.New();
    if (!weight.isEmpty()) Type("Text10", weight);
    PressOk();
    ASSERT_FALSE(FormIsOpen());
  }

  QString Path(const char* name) const { return folder.filePath(name); }
  QByteArray Bytes(const QString& path) const {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
  }
};

inline Message ErrorSaid(const QString& text, const QString& title = QStringLiteral("Error")) {
  return {QStringLiteral("error"), title, text};
}
