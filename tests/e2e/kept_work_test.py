"""Ends that the user did not choose: what was not saved comes back at the next start."""
import glob
import os
import signal
import subprocess
import sys
import tempfile
import unittest

from person import FORM, UNSAVED, Person

PROGRAM = os.path.abspath(sys.argv.pop(1))
PICTURES = os.path.abspath(sys.argv.pop(1))

QUESTION = (
    "A case was not saved when TELMARION ended. It was kept.\n"
    "Do you want to go on with it ?\n\n"
    '"No" discards it. "Cancel" keeps it for another start.'
)


class OtherScreen:
    """An X server that the test may kill."""

    def __init__(self):
        reading, writing = os.pipe()
        self.process = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x1024x24"],
            pass_fds=[writing], stderr=subprocess.DEVNULL,
        )
        os.close(writing)
        with os.fdopen(reading) as number:
            self.display = ":" + number.readline().strip()

    def die(self):
        self.process.kill()
        self.process.wait()


class KeptWork(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.people = []
        self.screen = None

    def tearDown(self):
        for person in self.people:
            person.leave()
        if self.screen is not None:
            self.screen.die()
        self.folder.cleanup()

    def start(self, **how):
        person = Person(PROGRAM, self.folder.name, "en_US.UTF-8", **how)
        self.people.append(person)
        person.find("frame", "TELMARION")
        return person

    def kept(self):
        return glob.glob(os.path.join(self.folder.name, ".local/share/telmarion/*.json"))

    def confirm_a_case(self, person):
        person.press("New")
        person.press("OK", top=person.find(*FORM))
        person.gone(*FORM)
        person.find(*UNSAVED)

    def check_that_it_is_back(self):
        person = self.start()
        os.makedirs(PICTURES, exist_ok=True)
        person.find("label", QUESTION)
        person.screenshot(os.path.join(PICTURES, "kept-case-offered.png"))
        person.answer(QUESTION, "Yes")
        person.find(*UNSAVED)
        person.shows("R/Wb", "2.81")
        return person

    def check_a_quiet_start(self):
        person = self.start()
        person.press("New")  # with a question open this could not be pressed
        person.find(*FORM)
        self.assertFalse(person.is_there("label", QUESTION))

    def end_cleanly(self, person):
        person.bring_to_front(UNSAVED)
        person.keys("ctrl+q")
        person.answer("Do you want to save data ?", "No")
        self.assertEqual(person.wait_for_end(), 0)
        self.assertEqual(self.kept(), [])

    def test_a_termination(self):
        person = self.start()
        self.confirm_a_case(person)
        person.process.send_signal(signal.SIGTERM)
        self.assertEqual(person.wait_for_end(), 128 + signal.SIGTERM)
        self.end_cleanly(self.check_that_it_is_back())
        self.check_a_quiet_start()

    def test_a_termination_while_a_question_is_open(self):
        person = self.start()
        self.confirm_a_case(person)
        person.bring_to_front(UNSAVED)
        person.keys("ctrl+q")
        person.find("label", "Do you want to save data ?")
        person.process.send_signal(signal.SIGTERM)
        self.assertEqual(person.wait_for_end(), 128 + signal.SIGTERM)
        self.check_that_it_is_back()

    def test_a_termination_while_the_kept_case_is_offered(self):
        person = self.start()
        self.confirm_a_case(person)
        person.process.kill()
        person.wait_for_end()
        person = self.start()
        person.find("label", QUESTION)
        person.process.send_signal(signal.SIGTERM)
        self.assertEqual(person.wait_for_end(), 128 + signal.SIGTERM)
        self.check_that_it_is_back()

    def test_a_termination_while_a_form_is_being_filled(self):
        person = self.start()
        person.press("New")
        person.enter("Surname", "Kovac", FORM)
        person.process.send_signal(signal.SIGTERM)
        self.assertEqual(person.wait_for_end(), 128 + signal.SIGTERM)
        person = self.start()
        person.answer(QUESTION, "Yes")
        person.shows("Surname", "Kovac", FORM)

    def test_the_death_of_the_screen(self):
        self.screen = OtherScreen()
        person = self.start(DISPLAY=self.screen.display)
        self.confirm_a_case(person)
        self.screen.die()
        person.wait_for_end()
        self.check_that_it_is_back()

    def test_the_end_of_the_session(self):
        with open(os.path.join(self.folder.name, ".xsmstartup"), "w", encoding="utf-8") as session:
            session.write(PROGRAM + "\n")
        person = self.start(starter=["xsm"])
        self.confirm_a_case(person)
        saved_by_itself = self.kept()
        for path in saved_by_itself:
            os.remove(path)  # so that what is found later was kept at the session's end
        person.process.send_signal(signal.SIGTERM)  # the session's manager ends all its programs
        person.wait_for_end()
        self.assertEqual(self.kept(), saved_by_itself)
        self.check_that_it_is_back()


if __name__ == "__main__":
    unittest.main(verbosity=2)
