"""One user's whole day on an X server."""
import os
import subprocess
import sys
import unittest

from day import Day
from person import FORM, MAIN, SURE


class WholeDay(Day):
    def test_a_day_with_a_decimal_comma(self):
        person = self.start("de_DE.UTF-8")
        self.picture("main-window-empty")
        self.enter_a_case(person)
        self.check_the_results(person)
        self.look_at_the_head(person)
        self.ask_how_sure(person)
        self.print_to_a_file(person)
        self.save_and_check_the_bytes(person)
        self.open_change_and_be_asked(person)
        self.save_on_the_way_out(person)

    def ask_how_sure(self, person):
        person.bring_to_front(MAIN)
        person.keys("alt+t")
        person.keys("s")
        person.find(*SURE)
        person.enter("u of CE", "2", SURE)
        person.enter("u of Body weight", "1,5", SURE)
        budget = person.find("image", "Budget of Pmax", person.find(*SURE))
        person.wait(lambda: "CE 8" in budget.description, "the budget to follow")
        person.find("table cell", "2066847,58", person.find(*SURE))
        self.picture("how-sure")
        person.keys("Escape")
        person.gone(*SURE)
        self.assertIn(b'"1,5"', self.content(".config/telmarion/settings.json"))

    def print_to_a_file(self, person):
        person.bring_to_front(MAIN)
        person.keys("ctrl+p")
        person.answer("Print results?", "No")
        person.keys("ctrl+p")
        person.answer("Print results?", "Yes")
        dialog = ("dialog", "Print")
        person.enter_path(self.path("report.pdf"), dialog)
        self.picture("print-dialog")
        person.press("Print", top=person.find(*dialog))
        person.wait(lambda: os.path.exists(self.path("report.pdf")), "the report")
        text = subprocess.run(
            ["pdftotext", "-layout", self.path("report.pdf"), "-"],
            capture_output=True, check=True, text=True,
        ).stdout
        for words in ["TELMARION", "Name : Kovac Ana", "lizm = 10,4 cm", "Theta-R = 8,47 °"]:
            self.assertIn(words, text)

    def open_change_and_be_asked(self, person):
        person.keys("ctrl+o")
        person.name_file(self.path("kovac.txt"))
        person.shows("l/2", "10,4", FORM)
        person.keys("Return")
        person.gone(*FORM)
        person.press("Change")
        person.enter("l/2", "10.5", FORM)
        person.enter("CE", "12", FORM)
        person.keys("Return")
        person.gone(*FORM)
        person.wait(person.has_unsaved_changes, "the word of unsaved changes")
        self.save_the_head(person, "changed.bmp")  # the view was open all the time
        self.assertTrue(self.differ("turned.bmp", "changed.bmp"))
        person.bring_to_front(MAIN)
        with open(self.path("letter.txt"), "w", encoding="utf-8") as letter:
            letter.write("Dear colleague,\n")
        person.keys("ctrl+o")
        person.answer("Do you want to save data", "No")
        person.name_file(self.path("letter.txt"))
        person.answer("Not correct file", "OK")
        person.keys("ctrl+n")
        person.answer("Do you want to save data ?", "Cancel")
        self.assertFalse(person.is_there(*FORM))

    def save_on_the_way_out(self, person):
        person.keys("ctrl+q")
        person.answer("Do you want to save data ?", "Cancel")
        self.assertIsNone(person.process.poll())
        person.keys("ctrl+q")
        person.answer("Do you want to save data ?", "Yes")
        person.name_file(self.path("changed.txt"))
        self.assertEqual(person.wait_for_end(), 0)
        self.assertIn(b"lizm          = 10,5 cm\n", self.content("changed.txt"))
        self.assertIn(b"lizm          = 10,4 cm\n", self.content("kovac.txt"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
