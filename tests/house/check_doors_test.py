"""The door check finds what it is there to find."""
import pathlib
import tempfile
import unittest

import check_doors


class CheckDoors(unittest.TestCase):
    def found_in(self, path, line):
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder) / path
            file.parent.mkdir(parents=True)
            file.write_text(line + "\n", encoding="utf-8")
            return check_doors.check(pathlib.Path(folder))

    def test_allowed(self):
        for path, line in [
            ("platform/message_door.cpp", "#include <QMessageBox>"),
            ("platform/file_dialog.cpp", "QFileDialog dialog;"),
            ("tests/platform/message_door_test.cpp", "QMessageBox& box"),
            ("tests/platform/file_dialog_test.cpp", "QFileDialog& box"),
            ("platform/print_dialog.cpp", "QPrintDialog dialog(&printer);"),
            ("app/main_window.cpp", "door_.ShowError(this, text, title);"),
            ("build/debug/moc_a.cpp", "QMessageBox::warning(this);"),
            ("app/notes.md", "QMessageBox"),
        ]:
            self.assertEqual(self.found_in(path, line), [], (path, line))

    def test_forbidden(self):
        for path, line in [
            ("app/main_window.cpp", "#include <QMessageBox>"),
            ("caseform/deep/case_form.cpp", "  QMessageBox::warning(this, title, text);"),
            ("platform/file_dialog.cpp", "QMessageBox box;"),
            ("platform/message_door.h", "class QMessageBox;"),
            ("view3d/window.cpp", "QFileDialog::getSaveFileName(this)"),
            ("tests/app/window_test.cpp", "QFileDialog* box"),
            ("report/report.cpp", "QPrintDialog dialog(&printer);"),
            ("app/main.cpp", "QErrorMessage::qtHandler();"),
        ]:
            self.assertEqual(len(self.found_in(path, line)), 1, (path, line))


if __name__ == "__main__":
    unittest.main()
