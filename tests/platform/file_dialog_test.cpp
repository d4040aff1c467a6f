// The file dialog that people see asks for the right thing and remembers the folder.
#include "platform/file_dialog.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>

#include "tests/support/open_dialog.h"

namespace {

// Types `name` into the dialog's name box and confirms.
void Choose(QFileDialog& dialog, const QString& name) {
  dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(name);
  QMetaObject::invokeMethod(&dialog, "accept");
}

class FileDialogTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(folder_.isValid());
    QFile file(folder_.filePath("case.txt"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  QTemporaryDir folder_;
};

TEST_F(FileDialogTest, OpenAsksForAFileThatExists) {
  SystemFileDialog door;
  WhenOpen<QFileDialog>([&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.nameFilters(), QStringList("Text (*.txt)"));
    EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
    EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
    Choose(dialog, folder_.filePath("case.txt"));
  });
  EXPECT_EQ(door.AskOpenFileName(nullptr, "Text (*.txt)|*.txt"), folder_.filePath("case.txt"));
}

TEST_F(FileDialogTest, SaveProposesANameAndAddsTheExtension) {
  SystemFileDialog door;
  WhenOpen<QFileDialog>([&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.nameFilters(), QStringList("Picture (*.bmp)"));
    EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), "25.bmp");
    Choose(dialog, folder_.filePath("head"));
  });
  EXPECT_EQ(door.AskSaveFileName(nullptr, "Picture (*.bmp)|*.bmp", "bmp", "25.bmp"),
            folder_.filePath("head.bmp"));
}

TEST_F(FileDialogTest, AnExtensionThatWasTypedStays) {
  SystemFileDialog door;
  WhenOpen<QFileDialog>([&](QFileDialog& dialog) { Choose(dialog, folder_.filePath("head.old")); });
  EXPECT_EQ(door.AskSaveFileName(nullptr, "Text (*.txt)|*.txt", "txt", ""),
            folder_.filePath("head.old"));
}

TEST_F(FileDialogTest, CancelledGivesAnEmptyText) {
  SystemFileDialog door;
  WhenOpen<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
  EXPECT_EQ(door.AskOpenFileName(nullptr, "Text (*.txt)|*.txt"), QString());
  WhenOpen<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
  EXPECT_EQ(door.AskSaveFileName(nullptr, "Text (*.txt)|*.txt", "txt", "a.txt"), QString());
}

TEST_F(FileDialogTest, OpensInTheFolderChosenLast) {
  SystemFileDialog door;
  WhenOpen<QFileDialog>([&](QFileDialog& dialog) { Choose(dialog, folder_.filePath("case.txt")); });
  door.AskOpenFileName(nullptr, "Text (*.txt)|*.txt");
  for (int i = 0; i < 2; ++i) {  // a cancelled dialog does not forget it
    WhenOpen<QFileDialog>([&](QFileDialog& dialog) {
      EXPECT_EQ(dialog.directory(), QDir(folder_.path()));
      dialog.reject();
    });
    door.AskSaveFileName(nullptr, "Text (*.txt)|*.txt", "txt", "b.txt");
  }
}

TEST_F(FileDialogTest, SeveralFiltersAndPatterns) {
  SystemFileDialog door;
  WhenOpen<QFileDialog>([](QFileDialog& dialog) {
    EXPECT_EQ(dialog.nameFilters(), QStringList({"Pictures (*.bmp *.png)", "All files (*.*)"}));
    dialog.reject();
  });
  door.AskOpenFileName(nullptr, "Pictures (*.bmp;*.png)|*.bmp;*.png|All files|*.*");
}

}  // namespace
