"""Ends that the user did not choose: what was not saved comes back at the next start."""
import glob
import os
import signal
import subprocess
import sys
import tempfile
import unittest

import pyatspi

from person import FORM, MAIN, Person

PROGRAM = os.path.abspath(sys.argv.pop(1))
PICTURES = os.path.abspath(sys.argv.pop(1))

QUESTION = (
    "A case was not saved when TELMARION ended. It was kept.\n"
    "Continue with it?\n\n"
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
        person.find(*MAIN)
        return person

    def kept(self):
        return glob.glob(os.path.join(self.folder.name, ".local/share/telmarion/*.json"))

    def confirm_a_case(self, person):
        person.press("New")
        person.press("OK", top=person.find(*FORM))
        person.gone(*FORM)
        person.wait(person.has_unsaved_changes, "the word of unsaved changes")

    def check_that_it_is_back(self):
        person = self.start()
        os.makedirs(PICTURES, exist_ok=True)
        person.find("label", QUESTION)
        person.screenshot(os.path.join(PICTURES, "kept-case-offered.png"))
        person.answer(QUESTION, "Yes")
        person.wait(person.has_unsaved_changes, "the word of unsaved changes")
        person.shows("R/Wb", "2.81")
        return person

    def check_a_quiet_start(self):
        person = self.start()
        person.press("New")  # with a question open this could not be pressed
        person.find(*FORM)
        self.assertFalse(person.is_there("label", QUESTION))

    def end_cleanly(self, person):
        person.bring_to_front(MAIN)
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
        person.bring_to_front(MAIN)
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

    def end_and_go_on(self, person):
        """A termination, and a next start that takes up what was kept."""
        person.process.send_signal(signal.SIGTERM)
        self.assertEqual(person.wait_for_end(), 128 + signal.SIGTERM)
        person = self.start()
        person.answer(QUESTION, "Yes")
        return person

    def save(self, person, question=None):
        """Saves to a file that was not there; gives its bytes."""
        path = os.path.join(self.folder.name, f"saved-{len(self.people)}.txt")
        person.bring_to_front(MAIN)
        person.keys("ctrl+s")
        if question is not None:
            person.answer(question, "Yes")
        person.name_file(path)
        person.wait(lambda: os.path.exists(path), "the case file")
        with open(path, "rb") as file:
            return file.read()

    def test_a_termination_while_a_case_of_unknown_weight_is_changed(self):
        person = self.start()
        self.confirm_a_case(person)  # without a weight
        person.press("Change")
        person.find(*FORM)
        person = self.end_and_go_on(person)
        person.wait(person.has_unsaved_changes, "the case")
        person.shows("Weight", "Unknown")
        self.assertFalse(person.is_there("text", "Pmax in Pa"))
        saved = self.save(person)
        self.assertIn(b"Body weight   : Unknown kg\n", saved)
        self.assertNotIn(b"Pmax =", saved)

    def test_a_termination_after_ok_failed_without_a_weight(self):
        person = self.start()
        person.press("New")
        person.enter("l/2", "abc", FORM)
        person.press("OK", top=person.find(*FORM))
        person.answer("numeric value expected", "OK")
        person.shows("Weight", "60", FORM)
        person = self.end_and_go_on(person)
        person.shows("l/2", "abc", FORM)
        person.shows("Weight", "", FORM)

    def test_a_termination_while_the_stresses_are_those_of_the_case_before(self):
        question = "The stresses are those of the case before. Go on all the same?"
        refusal = "In this range of input data you could not use this model"
        person = self.start()
        self.confirm_a_case(person)
        person.press("Change")
        person.enter("Surname", "Kovac", FORM)
        person.enter("CE", "-20", FORM)
        person.press("OK", top=person.find(*FORM))
        person.answer(refusal, "OK")
        self.check_that_it_is_refused(person)
        person = self.end_and_go_on(person)
        person.answer(refusal, "OK")
        self.check_that_it_is_refused(person)
        saved = self.save(person, question)
        self.assertIn(b"theta-CE      = -20 ", saved)
        self.assertIn(b"Pmax/Wb       = 3006.761 m^-2\n", saved)

    def check_that_it_is_refused(self, person):
        person.shows("Pmax/Wb", "3006.76")
        box = person.find("text", "Pmax/Wb")
        self.assertFalse(box.getState().contains(pyatspi.STATE_ENABLED))
        os.makedirs(PICTURES, exist_ok=True)
        person.screenshot(os.path.join(PICTURES, "refused-case.png"))

    def test_a_termination_while_a_file_is_in_the_form(self):
        person = self.start()
        self.confirm_a_case(person)
        self.save(person)
        person.press("Change")
        person.enter("l/2", "11", FORM)
        person.press("OK", top=person.find(*FORM))
        person.gone(*FORM)
        person.bring_to_front(MAIN)
        person.keys("ctrl+o")
        person.answer("Do you want to save data", "No")
        person.name_file(os.path.join(self.folder.name, "saved-1.txt"))
        person.shows("l/2", "10.4", FORM)
        person = self.end_and_go_on(person)
        person.wait(person.has_unsaved_changes, "the case")
        self.assertIn(b"lizm          = 11 cm\n", self.save(person))

    def test_a_slip_at_a_question_of_yes_and_no(self):
        question = "Do you want to save data ?"
        person = self.start()
        self.confirm_a_case(person)
        person.bring_to_front(MAIN)
        person.keys("alt+F4")
        person.find("label", question)
        for keys in ["Escape", "alt+F4"]:
            person.keys(keys)
            person.settle()
            self.assertTrue(person.is_there("label", question), keys)
        self.assertEqual(len(self.kept()), 1)
        person.process.send_signal(signal.SIGTERM)
        self.assertEqual(person.wait_for_end(), 128 + signal.SIGTERM)
        self.check_that_it_is_back()

    def test_pipes_where_kept_work_should_be(self):
        folder = os.path.join(self.folder.name, ".local/share/telmarion")
        os.makedirs(folder)
        os.mkfifo(os.path.join(folder, "unsaved-case-1.json"))
        os.mkfifo(os.path.join(folder, "unsaved-case-2.lock"))
        person = self.start()
        self.confirm_a_case(person)
        person.process.send_signal(signal.SIGTERM)
        self.assertEqual(person.wait_for_end(), 128 + signal.SIGTERM)
        self.check_that_it_is_back()

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
