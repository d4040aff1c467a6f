"""The steps of a user's day with the real program in a real window: nothing of ours reaches into it.

A test that takes these steps is called with PROGRAM FOLDER_FOR_PICTURES.
"""
import os
import sys
import tempfile
import unittest

from person import FORM, HEAD, MAIN, Person

PROGRAM = os.path.abspath(sys.argv[1])
PICTURES = os.path.abspath(sys.argv[2])


class Day(unittest.TestCase):
    person_class = Person

    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.person = None

    def tearDown(self):
        if self.person is not None:
            self.person.leave()
        self.folder.cleanup()

    def path(self, name):
        return os.path.join(self.folder.name, name)

    def content(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()

    def differ(self, one, other):
        return self.content(one) != self.content(other)

    def picture(self, name):
        os.makedirs(PICTURES, exist_ok=True)
        self.person.screenshot(os.path.join(PICTURES, name + ".png"))

    def start(self, language):
        self.person = self.person_class(PROGRAM, self.folder.name, language)
        self.person.find(*MAIN)
        return self.person

    def enter_a_case(self, person):
        person.press("New")
        person.enter("Surname", "Kovac", FORM)
        person.enter("First name", "Ana", FORM)
        person.press("female", "radio button")
        person.press("Left", "radio button")
        person.enter("Birth", "15.11.1956", FORM)
        person.enter("l/2", "104", FORM)
        person.choose("l/2 unit", "mm", FORM)
        person.enter("Weight", "70 kg", FORM)
        person.keys("Tab")  # leaving the box checks it
        person.answer("numeric value expected", "OK")
        self.picture("case-form-after-a-refused-entry")
        person.enter("Weight", "70,0", FORM)
        person.enter("CE", "30,0", FORM)
        self.picture("case-form")
        person.keys("Return")
        person.gone(*FORM)

    def check_the_results(self, person):
        for box, text in [
            ("Name", "Kovac Ana"),
            ("Weight", "70,0"),
            ("Hip", "L"),
            ("R/Wb", "2,81"),
            ("Theta-R", "8,47"),
            ("Theta-pol", "16,41"),
            ("Pmax/Wb", "3006,76"),
            ("Pmax", "2066847,58"),
        ]:
            person.shows(box, text)
        self.picture("main-window")

    def look_at_the_head(self, person):
        person.press("3D vizualization")
        person.find(*HEAD)
        person.pick("Articular sphere", "Medium", HEAD)
        person.pick("Weight-bearing area", "High", HEAD)
        for box in ["Outlines of the sphere", "Outlines of the area", "Pole of the stress"]:
            person.tick(box, HEAD)
        self.picture("view-3d")
        self.save_the_head(person, "before.bmp")
        person.drag(HEAD, 120, 40)
        person.find(*HEAD)  # the caption is back after the full drawing
        self.picture("view-3d-turned")
        self.save_the_head(person, "turned.bmp")
        self.assertTrue(self.differ("before.bmp", "turned.bmp"))

    def save_the_head(self, person, name):
        person.press("Save picture", top=person.find(*HEAD))
        person.name_file(self.path(name))
        person.wait(lambda: os.path.exists(self.path(name)), name)
        self.assertEqual(self.content(name)[:2], b"BM")
        self.assertFalse(self.differ(name, "TEST.BMP"))

    def save_and_check_the_bytes(self, person):
        person.keys("ctrl+s")
        person.name_file(self.path("kovac.txt"))
        person.wait(lambda: os.path.exists(self.path("kovac.txt")), "the case file")
        lines = self.content("kovac.txt").split(b"\r\n")
        self.assertTrue(lines[0].startswith(b"TELMARION" + b" " * 40))
        self.assertEqual(
            lines[1:],
            [
                b"\n",
                b"Name          : Kovac Ana\n",
                b"Sex           : F\n",
                b"Date of birth : 15.11.1956\n",
                b"Body weight   : 70,0 kg\n",
                b"Hip           : L\n",
                b"Comments      : No\n",
                b"\n",
                b"lizm          = 10,4 cm\n",
                b"xizm          = 0,5 cm\n",
                b"zizm          = 6 cm\n",
                b"Cizm          = 4,4 cm\n",
                b"Hizm          = 16 cm\n",
                b"zasuk         = 0 \xb0  \n",
                b"theta-CE      = 30 \xb0  \n",
                b"radius of head= 0,025 m \n",
                b"\n",
                b"R/Wb          = 2,812\n",
                b"Theta-R       = 8,476 \xb0 \n",
                b"Pmax/Wb       = 3006,761 m^-2\n",
                b"Pmax = 2066847,58429341 Pa\n",
                b"",
            ],
        )
        person.find("label", "File in use: " + self.path("kovac.txt"))
        self.assertFalse(person.has_unsaved_changes())
