"""The first half of a user's day on a Wayland desktop."""
import subprocess
import sys
import unittest

from day import Day
from person import FORM, MAIN
from wayland_person import WaylandPerson


class WaylandDay(Day):
    person_class = WaylandPerson

    def test_the_first_half_of_a_day(self):
        person = self.start("de_DE.UTF-8")
        self.picture("main-window-empty")
        self.check_that_it_is_native(person)
        self.fold_a_list_by_escape(person)
        self.enter_a_case(person)
        self.check_the_results(person)
        self.look_at_the_head(person)
        person.bring_to_front(MAIN)
        self.save_and_check_the_bytes(person)
        self.open_again(person)
        self.leave_by_the_menu(person)

    def check_that_it_is_native(self, person):
        plugins = person.loaded_plugins()
        self.assertEqual(len(plugins), 1, plugins)
        self.assertTrue(plugins[0].startswith("libqwayland-"), plugins)
        windows = subprocess.check_output(["xdotool", "search", "--class", "."], text=True)
        self.assertEqual(len(windows.split()), 1, "there is a window beside Weston's")

    def fold_a_list_by_escape(self, person):
        person.press("New")
        combo = person.unfold("l/2 unit", FORM)
        person.keys("Escape")
        person.wait(lambda: not person.is_unfolded(combo), "the list to fold")
        person.enter("l/2", "104", FORM)  # the form is still there
        person.keys("Escape")
        person.gone(*FORM)

    def open_again(self, person):
        person.keys("ctrl+o")
        person.name_file(self.path("kovac.txt"))
        person.shows("l/2", "10,4", FORM)
        person.keys("Return")
        person.gone(*FORM)
        person.shows("Pmax", "2066847,58")

    def leave_by_the_menu(self, person):
        person.keys("alt+f")
        person.find("menu item", "Exit")
        self.picture("file-menu")
        person.keys("Up", "Return")  # the last entry
        self.assertEqual(person.wait_for_end(), 0)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
