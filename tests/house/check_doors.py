"""Fails on a message box or a dialog of Qt outside the door that is there for it.

Every message passes platform/message_door.h, every question for a file platform/file_dialog.h and every
question for a printer platform/print_dialog.h: a test can then listen and answer. The tests of the doors
themselves look at the real boxes.
"""
import pathlib
import re
import sys

# Qt class: the sources that may name it.
DOORS = {
    "QMessageBox": {"platform/message_door.cpp", "tests/platform/message_door_test.cpp"},
    "QErrorMessage": set(),
    "QInputDialog": set(),
    "QProgressDialog": set(),
    "QFileDialog": {"platform/file_dialog.cpp", "tests/platform/file_dialog_test.cpp"},
    "QPrintDialog": {"platform/print_dialog.cpp", "tests/platform/print_dialog_test.cpp"},
}
SKIPPED = {"build", ".git"}


def check(top):
    """All uses past a door below `top`, one line of text each."""
    found = []
    for path in sorted(top.rglob("*")):
        place = path.relative_to(top)
        if path.suffix not in {".h", ".cpp"} or place.parts[0] in SKIPPED:
            continue
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            for name, allowed in DOORS.items():
                if re.search(rf"\b{name}\b", line) and place.as_posix() not in allowed:
                    found.append(f"{place}:{number}: {name} is used past its door in platform/")
    return found


def main():
    found = check(pathlib.Path(sys.argv[1]))
    print("\n".join(found) or "every message, file and print question passes its door")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
