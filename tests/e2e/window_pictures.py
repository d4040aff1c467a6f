"""Pictures of every window of the real program, for a person to judge:
run_in_desktop.sh /usr/bin/python3 window_pictures.py PROGRAM FOLDER light|dark SCALE LANGUAGE [full]
With `full` the main window fills the screen."""
import os
import sys
import tempfile

from person import FORM, HEAD, HELP, Person

# A dark desktop as Qt finds it: the colours of a dark scheme of KDE's.
DARK_SETTINGS = """[General]
ColorScheme=Dark
[Colors:Window]
BackgroundNormal=42,46,50
ForegroundNormal=252,252,252
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
[Colors:View]
BackgroundNormal=27,30,32
BackgroundAlternate=35,38,41
ForegroundNormal=252,252,252
ForegroundLink=29,153,243
ForegroundVisited=155,89,182
[Colors:Selection]
BackgroundNormal=61,174,233
ForegroundNormal=252,252,252
[Colors:Tooltip]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
"""


class Tour:
    def __init__(self, program, pictures, theme, scale, language):
        self.pictures = pictures
        self.number = 0
        self.folder = tempfile.TemporaryDirectory()
        settings = {"QT_SCALE_FACTOR": scale}
        if theme == "dark":
            self._lay_out_dark_settings()
            settings.update(XDG_CURRENT_DESKTOP="KDE", KDE_FULL_SESSION="true", KDE_SESSION_VERSION="5")
        self.person = Person(program, self.folder.name, language, **settings)
        self.person.find("frame", "TELMARION")

    def _lay_out_dark_settings(self):
        folder = os.path.join(self.folder.name, ".config")
        os.makedirs(folder)
        with open(os.path.join(folder, "kdeglobals"), "w", encoding="utf-8") as file:
            file.write(DARK_SETTINGS)

    def picture(self, name):
        self.number += 1
        self.person.settle()
        self.person.screenshot(os.path.join(self.pictures, f"{self.number:02}-{name}.png"))

    def walk(self):
        person = self.person
        self.picture("main-empty")
        person.press("New")
        person.find(*FORM)
        self.picture("case-form")
        self._enter_the_patient()
        self.picture("case-form-filled")
        person.enter("l/2", "ten", FORM)
        person.keys("Tab")
        person.find("alert", "Error")
        self.picture("message")
        person.answer("numeric value expected", "OK")
        person.enter("l/2", "10.4", FORM)
        person.keys("Return")
        person.gone(*FORM)
        self.picture("main-case")
        self._refuse()
        self._prompts()
        self._other_windows()

    def _enter_the_patient(self):
        person = self.person
        person.enter("Surname", "Kovac", FORM)
        person.enter("First name", "Ana", FORM)
        person.press("female", "radio button")
        person.press("Left", "radio button")
        person.enter("Birth", "1956", FORM)
        person.enter("Weight", "70", FORM)
        person.enter("Comments", "Dysplasia, before osteotomy.", FORM)
        person.enter("CE", "30", FORM)

    def _refuse(self):
        person = self.person
        person.press("Change")
        person.enter("CE", "-25", FORM)
        person.keys("Return")
        person.find("alert", "Sorry")
        self.picture("refused-message")
        person.answer("In this range of input data you could not use this model", "OK")
        person.gone(*FORM)
        self.picture("refused-after")
        person.press("Change")
        person.enter("CE", "30", FORM)
        person.keys("Return")
        person.gone(*FORM)

    def _prompts(self):
        person = self.person
        person.keys("ctrl+n")
        person.find("alert", "TELMARION New")
        self.picture("save-prompt")
        person.answer("Do you want to save data ?", "Cancel")
        person.keys("ctrl+s")
        person.wait(person.find_file_dialog, "the file dialog")
        self.picture("save-dialog")
        person.keys("Escape")
        person.wait(lambda: not person.find_file_dialog(), "the file dialog to close")
        person.keys("ctrl+p")
        person.answer("Print results?", "Yes")
        person.find("dialog", "Print")
        self.picture("print-dialog")
        person.keys("Escape")
        person.gone("dialog", "Print")

    def _other_windows(self):
        person = self.person
        person.press("3D vizualization")
        person.find(*HEAD)
        self.picture("view-3d-opened")
        person.pick("Articular sphere", "Medium", HEAD)
        person.pick("Weight-bearing area", "High", HEAD)
        for box in ["Outlines of the area", "Pole of the stress"]:
            person.tick(box, HEAD)
        person.keys("Tab")
        self.picture("view-3d")
        person.keys("alt+F4")
        person.gone(*HEAD)
        person.keys("F1")
        person.find(*HELP)
        self.picture("help")
        person.keys("ctrl+f")
        person.type("stress")
        person.keys("Return")
        self.picture("help-search")
        person.keys("Escape")
        person.gone(*HELP)
        person.keys("alt+h")
        self.picture("menu")
        person.keys("a")
        person.find("dialog", "About TELMARION")
        self.picture("about")
        person.keys("Escape")


def main():
    program, pictures, theme, scale, language, *full = sys.argv[1:]
    os.makedirs(pictures, exist_ok=True)
    tour = Tour(os.path.abspath(program), os.path.abspath(pictures), theme, scale, language)
    try:
        if full:
            tour.person.fill_the_screen("TELMARION")
        tour.walk()
    finally:
        tour.person.leave()
        tour.folder.cleanup()


if __name__ == "__main__":
    main()
