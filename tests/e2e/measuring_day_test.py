"""From a radiograph to a saved case in the real program: once by mouse, once by keys alone.

Called with PROGRAM FOLDER_FOR_PICTURES MAKE_PHANTOM.
"""
import glob
import json
import os
import subprocess
import sys
import unittest

import phantom
from day import Day
from person import FORM, MAIN, Person
from radiograph_on_screen import ByKeys, ByMouse

MAKE_PHANTOM = os.path.abspath(sys.argv[3])

EMPTY = ("frame", "Measure on radiograph")
WINDOW = ("frame", "phantom.dcm – Measure on radiograph")
IN_FILE = {
    "l/2, cm": "lizm", "x trochanter, cm": "xizm", "z trochanter, cm": "zizm", "C, cm": "Cizm",
    "H, cm": "Hizm", "CE, °": "theta-CE", "Radius of head, cm": "radius of head",
}
ERRORS = {
    "u of Point on a circle's edge": "1", "u of Edge of the socket": "1", "u of Other points": "1",
}
# As marks are called where they are kept.
POINTS = {"socketEdge": phantom.SOCKET_EDGE, "crestTop": phantom.CREST_TOP,
          "crestLateral": phantom.CREST_LATERAL, "trochanter": phantom.TROCHANTER}


def number(text):
    return float(text.replace(",", "."))


class KeysOnly(Person):
    """Has no mouse, and nobody who presses buttons or brings windows to the front."""

    def _refuse(self, *_, **__):
        raise AssertionError("this is done by keys alone")

    press = tick = enter = mouse = drag = bring_to_front = _refuse

    def type_into(self, name, text, window):
        box = self.find("text", name, self.find(*window))
        self.tab_to(box, name)
        self.keys("ctrl+a")
        self.type(text)
        self.wait(lambda: box.queryText().getText(0, -1) == text, f"{name} to hold {text!r}")


class MeasuringDay(Day):
    def setUp(self):
        super().setUp()
        subprocess.run([MAKE_PHANTOM, self.path("phantom.dcm")], check=True)

    def kept_marks(self):
        """Of the work that is kept for another start."""
        [path] = glob.glob(self.path(".local/share/telmarion/*.json"))
        with open(path, encoding="utf-8") as file:
            return json.load(file)["marks"]["marks"]

    def check_the_marks(self):
        """Every point lies within a pixel, across and down, of where it belongs."""
        self.person.wait(lambda: self.are_in_place(self.kept_marks()), "marks to be kept where they belong")

    @staticmethod
    def are_in_place(marks):
        wanted = {key: [phantom.place(point)] for key, point in POINTS.items()}
        for key, head in [("head", phantom.HEAD), ("otherHead", phantom.OTHER_HEAD)]:
            wanted[key] = phantom.outline(head, phantom.HEAD_RADIUS, len(marks[key]))
        return all(abs(got[i] - own[i]) <= 1.0
                   for key, places in wanted.items()
                   for got, own in zip(marks[key], places, strict=True) for i in (0, 1))

    def check_the_truth(self, results, scale=0.0):
        """Gives the measurements and the results that are shown, which are near enough to the truth. Lengths
        may be wrong by the share `scale`."""
        measured = dict(self.person.rows_of("Measurements", WINDOW))
        for name, truth in phantom.MEASUREMENTS.items():
            slack = 0.6 if "°" in name else 0.04 + scale * truth  # cm; a pixel is 0.02 cm
            self.assertAlmostEqual(number(measured[name]), truth, delta=slack, msg=name)
        shown = self.results_shown()
        self.assertEqual(list(shown), results)
        for name, (_, interval) in shown.items():
            low, high = [number(end) for end in interval.split(" to ")]
            self.assertTrue(low < phantom.true_results()[name] < high, f"{name}: {interval}")
        return measured, shown

    def check_the_copy(self, text, measured, shown):
        """The table as it came from the clipboard has what the window shows."""
        rows = [line.split("\t") for line in text.splitlines()]
        self.assertEqual(rows[0], ["Measurement", "Unit", "Value"])
        blank = rows.index([""])
        self.assertEqual({f"{name}, {unit}": value for name, unit, value in rows[1:blank]}, measured)
        results = {}
        for name, unit, value, _, low, high in rows[blank + 2:]:
            results[f"{name}, {unit}" if unit else name] = [value, f"{low} to {high}"]
        self.assertEqual(results, shown)

    def results_shown(self):
        """Value and interval of each result."""
        return {row[0]: row[1:] for row in self.person.rows_of("Results", WINDOW)}

    def check_the_panel(self, without_errors):
        """It has the results of the measuring window, to the digit."""
        for name, (value, _) in without_errors.items():
            self.person.shows(name.split(",")[0], value)

    def check_the_file(self, name, measured, weight):
        self.person.wait(lambda: os.path.exists(self.path(name)), "the case file")
        lines = self.content(name).decode("cp1250").replace("\r", "").split("\n")
        pairs = [line.split("=", 1) for line in lines if "=" in line]
        values = {key.strip(): value.split()[0] for key, value in pairs}
        for shown, key in IN_FILE.items():
            factor = 100 if key == "radius of head" else 1  # m
            self.assertAlmostEqual(number(values[key]) * factor, number(measured[shown]), 9, key)
        self.assertEqual(values["zasuk"], "0")
        for line in ["Name          : Phantom Pelvis", "Sex           : F", "Hip           : L",
                     "Date of birth : 1956-11-15", f"Body weight   : {weight} kg", "Comments      : No"]:
            self.assertIn(line, lines)

    def test_by_mouse(self):
        person = self.start("de_DE.UTF-8")
        person.take("Tools", "Measure on radiograph…", MAIN)
        person.take("File", "Open radiograph…", EMPTY)
        person.name_file(self.path("phantom.dcm"))
        self.mark_by_mouse(ByMouse(person, WINDOW, (phantom.WIDTH, phantom.HEIGHT)))
        person.click_into("Magnification", "1,15", WINDOW)
        self.check_the_marks()
        without_errors = self.results_shown()
        self.enter_errors_by_mouse(person)
        measured, shown = self.check_the_truth(["R/Wb", "Theta-R, °", "Theta-pol, °", "Pmax/Wb, m^-2"])
        self.picture("measuring-marked")
        person.take("Edit", "Copy table", WINDOW)
        person.click("push button", "Use these", person.find(*WINDOW))
        self.fill_in_by_mouse(person, measured, shown)
        self.check_the_panel(without_errors)
        person.take("File", "Save", MAIN)
        person.name_file(self.path("mouse.txt"))
        self.check_the_file("mouse.txt", measured, "70,0")

    def mark_by_mouse(self, radiograph):
        person = self.person
        head = phantom.place(phantom.HEAD)
        radiograph.click_at(phantom.outline(phantom.HEAD, phantom.HEAD_RADIUS, 5), head)
        person.click("table cell", "2  Other head", radiograph.window)
        other = phantom.place(phantom.OTHER_HEAD)
        radiograph.click_at(phantom.outline(phantom.OTHER_HEAD, phantom.HEAD_RADIUS, 5), other)
        person.click("table cell", "4  Edge of the socket", radiograph.window)
        edge = phantom.place(phantom.SOCKET_EDGE)
        slipped = (edge[0] + 14, edge[1] - 9)
        radiograph.click_at([slipped], slipped)
        for point in [phantom.CREST_TOP, phantom.CREST_LATERAL, phantom.TROCHANTER]:
            radiograph.click_at([phantom.place(point)], phantom.place(point))
        radiograph.drag_slowly(slipped, edge, lambda: self.picture("measuring-magnifier"))

    def enter_errors_by_mouse(self, person):
        tab = person.find("page tab", "How sure", person.find(*WINDOW))
        self.scroll_to(tab)
        person.click_on(tab)
        for name, text in (ERRORS | {"u of Magnification": "0,005"}).items():
            self.scroll_to(person.find("text", name, person.find(*WINDOW)))
            person.click_into(name, text, WINDOW)

    def scroll_to(self, thing):
        """Turns the wheel beside the radiograph until the thing stands above the buttons."""
        person = self.person
        bottom = person.area(person.find("push button", "Use these", person.find(*WINDOW))).y
        table = person.area(person.find("table", "Measurements", person.find(*WINDOW)))
        while person.area(thing).y + person.area(thing).height > bottom - 10:
            before = person.area(thing).y
            person.move_to(table.x + 10, bottom // 2)
            person.turn_wheel(1)
            person.wait(lambda: person.area(thing).y < before, "the panel to scroll")

    def fill_in_by_mouse(self, person, measured, shown):
        person.find(*FORM)
        self.check_the_form(measured)
        person.click("text", "Comments", person.find(*FORM))
        person.keys("ctrl+v")
        comments = person.wait(lambda: person.text_of("Comments", FORM), "the copied table")
        self.check_the_copy(comments, measured, shown)
        person.keys("ctrl+a", "Delete")
        person.click_into("Weight", "70,0", FORM)
        self.picture("measuring-form")
        person.click("push button", "OK", person.find(*FORM))
        person.gone(*FORM)

    def check_the_form(self, measured):
        for box, name in [("l/2", "l/2, cm"), ("CE", "CE, °"), ("H", "H, cm"), ("C", "C, cm")]:
            self.person.shows(box, measured[name], FORM)

    def test_by_keys_alone(self):
        self.person_class = KeysOnly
        person = self.start("en_US.UTF-8")
        person.keys("alt+t")
        person.find("menu item", "Measure on radiograph…")
        person.keys("m")
        person.wait(lambda: person.is_active(EMPTY), "the measuring window in front")
        person.keys("alt+f")
        person.find("menu item", "Open radiograph…")
        person.keys("o")
        person.name_file(self.path("phantom.dcm"))
        self.mark_by_keys(ByKeys(person, WINDOW))
        without_errors = self.enter_numbers_by_keys(person)
        self.check_the_marks()
        measured, shown = self.check_the_truth(list(phantom.true_results()), scale=0.015)
        self.picture("measuring-by-keys")
        person.keys("ctrl+shift+c")
        person.keys("ctrl+Return")
        self.fill_in_by_keys(person, measured, shown)
        self.check_the_panel(without_errors)
        person.keys("ctrl+s")
        person.name_file(self.path("keys.txt"))
        self.check_the_file("keys.txt", measured, "70")

    def mark_by_keys(self, radiograph):
        person = self.person
        person.wait(lambda: person.is_focused(radiograph.view), "the radiograph to get the focus")
        person.keys("Right")  # the cross-hair appears
        for head in [phantom.HEAD, phantom.OTHER_HEAD]:
            for place in phantom.outline(head, phantom.HEAD_RADIUS, 4):
                radiograph.set_at(place)
            person.keys("ctrl+m")
        edge = phantom.place(phantom.SOCKET_EDGE)
        radiograph.set_at((edge[0] + 14, edge[1] - 9))
        for point in [phantom.CREST_TOP, phantom.CREST_LATERAL, phantom.TROCHANTER]:
            radiograph.set_at(phantom.place(point))
        self.correct_by_keys(radiograph, edge)
        self.mark_the_ball(radiograph)

    def correct_by_keys(self, radiograph, edge):
        """Goes from point to point to the one that was set wrong, and moves it."""
        person = self.person
        for name in ["Trochanter", "Crest, lateral", "Crest, top", "Edge of the socket"]:
            person.keys("p")
            person.wait(lambda: radiograph.view.description.startswith(f"Selected: {name}."), name)
        radiograph.go_to(edge)
        self.picture("measuring-magnifier-by-keys")
        person.keys("Escape")

    def mark_the_ball(self, radiograph):
        person = self.person
        person.tab_to(person.find("table", "Marks", radiograph.window), "the list of marks")
        person.keys("Down")  # from the trochanter
        person.find("label", "Click three or more points on the edge of the ball, or drag from its "
                    "centre to its edge. Then enter its diameter.")
        radiograph.focus("shift+Tab")
        for place in phantom.outline(phantom.BALL, phantom.BALL_RADIUS, 5):
            radiograph.set_at(place)

    def enter_numbers_by_keys(self, person):
        """Gives the results as they stand before the errors are entered."""
        for name, text in [("Diameter of ball", "25"), ("Rotation", "0"), ("Body weight", "70")]:
            person.type_into(name, text, WINDOW)
        without_errors = self.results_shown()
        person.keys("alt+o")
        for name, text in (ERRORS | {"u of Body weight": "1.5"}).items():
            person.type_into(name, text, WINDOW)
        return without_errors

    def fill_in_by_keys(self, person, measured, shown):
        person.find(*FORM)
        self.check_the_form(measured)
        person.shows("Weight", "70", FORM)
        person.tab_to(person.find("text", "Comments", person.find(*FORM)), "the comments")
        person.keys("ctrl+v")
        comments = person.wait(lambda: person.text_of("Comments", FORM), "the copied table")
        self.check_the_copy(comments, measured, shown)
        person.keys("ctrl+a", "Delete", "ctrl+Return")
        person.gone(*FORM)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[4:], verbosity=2)
