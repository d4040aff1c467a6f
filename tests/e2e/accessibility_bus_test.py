"""The windows of the real program as they stand on the accessibility bus."""
import os
import sys
import tempfile
import unittest

import pyatspi

from person import FORM, HEAD, HELP, MAIN, SURE, Person

PROGRAM = os.path.abspath(sys.argv.pop(1))
sys.argv.pop(1)  # no pictures are taken

CONTROLS = {
    "push button", "check box", "radio button", "text", "combo box", "list", "list item", "tree",
    "tree item", "table cell", "page tab", "menu", "menu item", "link", "progress bar", "image",
}


class AccessibilityBus(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.person = Person(PROGRAM, self.folder.name, "en_US.UTF-8")
        self.person.find(*MAIN)

    def tearDown(self):
        self.person.leave()
        self.folder.cleanup()

    def below(self, window):
        top = self.person.find(*window)
        return [thing for thing in self.person.all_in(top) if self.person.is_showing(thing)]

    def check_names(self, window):
        things = [thing for thing in self.below(window) if thing.getRoleName() in CONTROLS]
        self.assertTrue(things, window)
        nameless = [self.path(thing) for thing in things if not thing.name.strip()]
        self.assertEqual(nameless, [])

    @staticmethod
    def path(thing):
        parts = []
        while thing is not None and thing.getRoleName() != "application":
            parts.insert(0, f"{thing.getRoleName()} {thing.name!r}")
            thing = thing.parent
        return " / ".join(parts)

    def test_every_window_tells_what_is_in_it(self):
        person = self.person
        self.check_names(MAIN)
        person.press("New")
        self.check_names(FORM)
        unit = person.find("combo box", "l/2 unit", person.find(*FORM))
        self.assertEqual(person.chosen(unit), "cm")
        person.enter("l/2", "10.4", FORM)
        picture = person.find("image", "Pelvis and femur with the dimensions to measure")
        self.assertEqual(picture.description, "Marked in red: l/2, half of the interhip distance")
        person.enter("Weight in kg", "70", FORM)
        person.press("OK")
        person.gone(*FORM)
        diagram = person.find("image", "Hip stress diagram")
        self.assertIn("its peak of 2066847.58 Pa", diagram.description)
        self.check_the_head()
        self.check_how_sure()
        self.check_the_help()

    def check_how_sure(self):
        person = self.person
        person.bring_to_front(MAIN)
        person.keys("alt+t")
        person.keys("s")
        person.find(*SURE)
        person.enter("u of CE in degrees", "abc", SURE)
        self.check_names(SURE)
        box = person.find("text", "u of CE", person.find(*SURE))
        person.wait(lambda: box.description.startswith("not a number. "), "the word of a wrong entry")
        person.keys("alt+F4")
        person.gone(*SURE)

    def check_the_head(self):
        person = self.person
        person.press("3D vizualization")
        person.find(*HEAD)
        self.check_names(HEAD)
        head = person.find("image", "Femoral head")
        self.assertTrue(head.getState().contains(pyatspi.STATE_FOCUSABLE))
        person.wait(lambda: person.find(*HEAD).getState().contains(pyatspi.STATE_ACTIVE), "the view in front")
        head.queryComponent().grabFocus()
        person.wait(lambda: head.getState().contains(pyatspi.STATE_FOCUSED), "the head to get the focus")
        person.keys("Right")
        axes = person.find("image", "Coordinate system")
        turned = "Turned by 10 ° to the right and 0 ° down."
        person.wait(lambda: axes.description == turned, "the head to turn")
        person.keys("alt+F4")
        person.gone(*HEAD)

    def check_the_help(self):
        person = self.person
        person.wait(
            lambda: person.find(*MAIN).getState().contains(pyatspi.STATE_ACTIVE),
            "the main window in front",
        )
        person.keys("F1")
        person.find(*HELP)
        self.check_names(HELP)


if __name__ == "__main__":
    unittest.main(verbosity=2)
