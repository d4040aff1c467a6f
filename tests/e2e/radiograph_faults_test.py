"""Radiographs that cannot be read, in the real program: each is said, and what was marked stays.

Called with PROGRAM FOLDER_FOR_PICTURES MAKE_PHANTOM DECODER CLASS. The program is copied beside a decoder
that does as the name of a picture says.
"""
import glob
import os
import re
import shutil
import signal
import subprocess
import sys
import unittest

from day import PROGRAM, Day
from person import Person

MAKE_PHANTOM = os.path.abspath(sys.argv[3])
DECODER = os.path.abspath(sys.argv[4])

EMPTY = ("frame", "Measure on radiograph")
WINDOW = ("frame", "phantom.dcm – Measure on radiograph")
GIVE_UP = "The marks on this radiograph have not been used. Discard them and open another?"

# Of a picture to be killed at it answers a part, and waits for its end.
OWN_DECODER = f"""#!/bin/sh
case "$2" in
  */killed.dcm) "{DECODER}" "$@" | head -c 1000000; kill -STOP $$ ;;
  */memory.png) exec "{DECODER}" {150 << 20} "$2" ;;
esac
exec "{DECODER}" "$@"
"""


class RadiographFaults(Day):
    """What both kinds below need."""

    def setUp(self):
        super().setUp()
        self.program = self.path("bin/telmarion")
        for place in ["bin", "libexec/telmarion"]:
            os.makedirs(self.path(place))
        shutil.copy2(PROGRAM, self.program)
        decoder = self.path("libexec/telmarion/telmarion-decode")
        with open(decoder, "w", encoding="utf-8") as file:
            file.write(OWN_DECODER)
        os.chmod(decoder, 0o755)
        subprocess.run([MAKE_PHANTOM, self.path("phantom.dcm")], check=True)

    def start_on(self, name):
        command = [self.program, "--measure", self.path(name)]
        self.person = Person(self.program, self.folder.name, "en_US.UTF-8", starter=command)
        return self.person

    def open(self, name, window):
        self.person.wait(lambda: self.person.is_active(window), "the window in front")
        self.person.keys("ctrl+o")
        self.person.name_file(self.path(name))

    def mark_a_point(self):
        person = self.start_on("phantom.dcm")
        view = person.find("image", "Radiograph", person.find(*WINDOW))
        person.wait(lambda: person.is_focused(view), "the radiograph to get the focus")
        person.keys("Right", "Return")
        person.wait(lambda: view.description == "Head circle: 1 point of 3.", "the point")
        self.before = self.shown()
        return person

    def shown(self):
        """All that the window tells, in its order, but for the place under the pointer."""
        person = self.person
        told = [(thing.getRoleName(), thing.name, thing.description)
                for thing in person.all_in(person.find(*WINDOW)) if person.is_showing(thing)]
        return [one for one in told if not re.fullmatch(r"(\d+, \d+: \d+)?", one[1])]

    def check_that_nothing_changed(self, message):
        self.person.answer(message, "OK")
        self.person.wait(lambda: self.person.is_active(WINDOW), "the window in front again")
        self.assertEqual(self.shown(), self.before)

    def decoders(self):
        """The program's children, with their states."""
        found = []
        for path in glob.glob("/proc/[0-9]*/stat"):
            try:
                with open(path, encoding="utf-8", errors="replace") as file:
                    process, rest = file.read().split(" (", 1)
            except OSError:
                continue  # it has ended
            state, parent = rest.rsplit(") ", 1)[1].split()[:2]
            if int(parent) == self.person.process.pid:
                found.append((int(process), state))
        return found


class Unreadable(RadiographFaults):
    def test_a_file_that_is_gone(self):
        person = self.start_on("gone.dcm")
        person.answer("gone.dcm: The file cannot be read: No such file or directory.", "OK")
        view = person.find("image", "Radiograph", person.find(*EMPTY))
        self.assertEqual(view.description, "No picture.")
        self.open("phantom.dcm", EMPTY)
        person.find(*WINDOW)

    def test_a_file_that_is_no_picture(self):
        with open(self.path("letter.dcm"), "w", encoding="utf-8") as file:
            file.write("Dear colleague,\n")
        person = self.mark_a_point()
        self.open("letter.dcm", WINDOW)
        person.answer(GIVE_UP, "Yes")
        self.check_that_nothing_changed("letter.dcm: The file is not a picture that can be read.")

    def test_a_decoder_that_is_killed_at_work(self):
        shutil.copy(self.path("phantom.dcm"), self.path("killed.dcm"))
        person = self.mark_a_point()
        self.open("killed.dcm", WINDOW)
        person.answer(GIVE_UP, "Yes")
        decoder, _ = person.wait(
            lambda: next((own for own in self.decoders() if own[1] == "T"), None), "the decoder at work")
        person.find("status bar", "Opening… Escape cancels.", person.find(*WINDOW))
        self.picture("measuring-opening")
        os.kill(decoder, signal.SIGKILL)
        self.check_that_nothing_changed(
            "killed.dcm: The file made the program that decodes pictures fail.")
        self.assertEqual(self.decoders(), [])


class TooLittleMemory(RadiographFaults):
    def test_a_picture_that_needs_more(self):
        subprocess.run(["convert", "-size", "6000x6000", "xc:gray50", "-depth", "16",
                        self.path("memory.png")], check=True)
        person = self.mark_a_point()
        self.open("memory.png", WINDOW)
        person.answer(GIVE_UP, "Yes")
        self.check_that_nothing_changed("memory.png: Decoding the picture needs too much memory.")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[5:], verbosity=2)
