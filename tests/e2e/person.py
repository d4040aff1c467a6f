"""A person in front of the program: sees it as a screen reader does, uses keyboard and mouse."""
import os
import subprocess
import time

import pyatspi

PATIENCE = 60  # seconds to wait for what is expected to show; a busy machine may need them

# Windows of the program: role and title.
FORM = ("dialog", "TELMARRION data")
HEAD = ("frame", "3D vizualization TELMARION")
HELP = ("frame", "TELMARION Help")
MAIN = ("frame", "TELMARION")
SURE = ("frame", "How sure is this case")


class Person:
    """In front of an X server."""

    platform = "xcb"
    # Everything of this person's lies in the folder.
    unset = ["LANGUAGE", "WAYLAND_DISPLAY", "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"]

    def __init__(self, program, folder, language, starter=None, **settings):
        """`starter` is a command that starts the program, when it does not start by itself.
        `settings` are added to its environment."""
        environment = dict(
            os.environ,
            LC_ALL=language,
            HOME=folder,
            TMPDIR=folder,
            XDG_RUNTIME_DIR=folder,
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
            QT_QPA_PLATFORM=self.platform,
            **settings,
        )
        for name in self.unset:
            environment.pop(name, None)
        self.name = os.path.basename(program)
        self.process = subprocess.Popen(starter or [program], env=environment, cwd=folder)
        self.application = self.wait(self._find_application, "the program on the accessibility bus")

    def wait(self, look, what):
        """What `look` gives as soon as it gives something."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            try:
                found = look()
            except Exception:  # the tree changes while it is read
                found = None
            if found:
                return found
            time.sleep(0.05)
        raise AssertionError(f"waited in vain for {what}\n{self.describe()}")

    def _find_application(self):
        desktop = pyatspi.Registry.getDesktop(0)
        for application in desktop:
            if application is not None and application.name == self.name:
                return application
        return None

    def all_in(self, top=None):
        """A thing and all below it; without one, all of the program."""
        top = self.application if top is None else top
        yield top
        for child in top:
            if child is not None:
                yield from self.all_in(child)

    def _where_to_look(self, role, top=None):
        """Windows stand at the top: to look for one does not take a walk through all of them."""
        if top is None and role in ("frame", "dialog", "alert"):
            return [window for window in self.application if window is not None]
        return self.all_in(top)

    def describe(self):
        try:
            return "\n".join(f"{o.getRoleName()} {o.name!r}" for o in self.all_in())
        except Exception as trouble:
            return f"(the tree could not be read: {trouble})"

    @staticmethod
    def is_showing(thing):
        return thing.getState().contains(pyatspi.STATE_SHOWING)

    @staticmethod
    def _is_named(thing, name):
        """By its caption; the name of a number's box has the unit behind it."""
        return thing.name == name or thing.name.startswith(name + " in ")

    def find(self, role, name, top=None):
        def look():
            for thing in self._where_to_look(role, top):
                if thing.getRoleName() == role and self._is_named(thing, name) and self.is_showing(thing):
                    return thing
            return None

        return self.wait(look, f"{role} {name!r}")

    def is_there(self, role, name):
        try:
            return any(
                o.getRoleName() == role and o.name == name and self.is_showing(o)
                for o in self._where_to_look(role)
            )
        except Exception:
            return False

    def gone(self, role, name):
        self.wait(lambda: not self.is_there(role, name), f"{role} {name!r} to close")

    def text_of(self, name, window=None):
        top = self.find(*window) if window else None
        return self.find("text", name, top).queryText().getText(0, -1)

    def shows(self, name, text, window=None):
        self.wait(lambda: self.text_of(name, window) == text, f"{name} to show {text!r}")

    def has_unsaved_changes(self):
        """As the status line tells."""
        return self.is_there("label", "Unsaved changes")

    def press(self, name, role="push button", top=None):
        self.find(role, name, top).queryAction().doAction(0)

    def keys(self, *keys):
        subprocess.run(["xdotool", "key", "--clearmodifiers", *keys], check=True)

    def type(self, text):
        subprocess.run(["xdotool", "type", "--delay", "8", "--", text], check=True)

    def enter(self, name, text, window):
        """Goes to a box as the Tab key would, and types over what is in it."""
        box = self.find("text", name, self.find(*window))

        def focused():
            # Asked again: a window that comes back to the front takes the focus with it.
            box.queryComponent().grabFocus()
            time.sleep(0.05)
            return box.getState().contains(pyatspi.STATE_FOCUSED)

        self.wait(focused, f"{name} to get the focus")
        self.type(text)
        self.wait(lambda: box.queryText().getText(0, -1) == text, f"{name} to hold {text!r}")

    @staticmethod
    def is_focused(thing):
        return thing.getState().contains(pyatspi.STATE_FOCUSED)

    def tab_to(self, thing, name, key="Tab"):
        for _ in range(40):
            if self.is_focused(thing):
                return
            self.keys(key)
            time.sleep(0.1)
        raise AssertionError(f"{key} does not lead to {name}")

    def choose(self, list_name, text, window):
        """Goes from a box to the unit list behind it, and types the unit."""
        combo = self.find("combo box", list_name, self.find(*window))
        self.keys("Tab")
        self.type(text)
        self.wait(lambda: self.chosen(combo) == text, f"{list_name} to show {text!r}")

    def pick(self, list_name, text, window):
        """Unfolds a list and takes an entry by its letters."""
        combo = self.unfold(list_name, window)
        self.type(text)
        self.keys("Return")
        self.wait(lambda: self.chosen(combo) == text, f"{list_name} to show {text!r}")

    def unfold(self, list_name, window):
        combo = self.find("combo box", list_name, self.find(*window))
        self.tab_to(combo, list_name)
        self.keys("alt+Down")
        self.wait(lambda: self.is_unfolded(combo), f"{list_name} to unfold")
        return combo

    @staticmethod
    def is_unfolded(combo):
        return combo.getState().contains(pyatspi.STATE_EXPANDED)

    @staticmethod
    def chosen(combo):
        """The entry that is marked in a list, as a screen reader finds it; None without one."""
        for entry in combo[0]:
            if entry.getState().contains(pyatspi.STATE_SELECTED):
                return entry.name
        return None

    def tick(self, name, window):
        box = self.find("check box", name, self.find(*window))
        box.queryAction().doAction(0)
        self.wait(lambda: box.getState().contains(pyatspi.STATE_CHECKED), f"{name} to be ticked")

    @staticmethod
    def area(thing):
        return thing.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)

    @staticmethod
    def mouse(*steps):
        subprocess.run(["xdotool", *steps], check=True)

    def move_to(self, x, y):
        self.mouse("mousemove", str(x), str(y))

    def waver_at(self, x, y):
        """For a window that has just come up and may not have seen the mouse arrive."""
        self.mouse("mousemove", str(x + 1), str(y), "mousemove", str(x), str(y))

    def click_here(self):
        self.mouse("click", "1")

    def hold_mouse(self):
        self.mouse("mousedown", "1")

    def let_go_mouse(self):
        self.mouse("mouseup", "1")

    def turn_wheel(self, notches):
        """Towards the person; away where `notches` is negative."""
        self.mouse("click", "--repeat", str(abs(notches)), "--delay", "20", "5" if notches > 0 else "4")

    def click(self, role, name, top=None):
        """With the mouse, in the middle of what is to be clicked."""
        thing = self.find(role, name, top)
        self.wait(lambda: self.area(thing).width > 0, f"{name} to take its place")
        self.click_on(thing)

    def click_on(self, thing):
        area = self.area(thing)
        self.move_to(area.x + area.width // 2, area.y + area.height // 2)
        self.click_here()

    def take(self, menu, command, window):
        """A command, by clicks in the menu."""
        self.click("menu item", menu, self.find(*window))
        self.click("menu item", command, self.find(*window))

    def click_into(self, name, text, window):
        """Types over what is in a box that was clicked."""
        box = self.find("text", name, self.find(*window))

        def focused():
            # Clicked again where the box has moved: what is entered may move those below.
            self.click_on(box)
            time.sleep(0.05)
            return self.is_focused(box)

        self.wait(focused, f"{name} to get the focus")
        self.keys("ctrl+a")
        self.type(text)
        self.wait(lambda: box.queryText().getText(0, -1) == text, f"{name} to hold {text!r}")

    def drag(self, window, right, down):
        """Drags the mouse from a third of the window's width, by this many pixels."""
        area = self.find(*window).queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        x, y = area.x + area.width // 3, area.y + area.height // 2
        steps = ["mousemove", str(x), str(y), "mousedown", "1"]
        for part in range(1, 6):
            steps += ["mousemove", str(x + right * part // 5), str(y + down * part // 5)]
            steps += ["sleep", "0.05"]
        subprocess.run(["xdotool", *steps, "mouseup", "1"], check=True)

    def is_active(self, window):
        return self.find(*window).getState().contains(pyatspi.STATE_ACTIVE)

    def bring_to_front(self, window):
        found = self.find(*window)
        subprocess.run(
            ["xdotool", "search", "--onlyvisible", "--name", f"^{window[1]}$", "windowactivate", "--sync"],
            check=True,
        )
        self.wait(lambda: found.getState().contains(pyatspi.STATE_ACTIVE), f"{window} in front")

    def enter_path(self, path, window):
        """Types a path into the only text box of a dialog that holds one."""

        def look():
            for thing in self.all_in(self.find(*window)):
                if thing.getRoleName() == "text" and thing.queryText().getText(0, -1).endswith(".pdf"):
                    return thing
            return None

        box = self.wait(look, "the box for the file")
        box.queryEditableText().setTextContents(path)

    def answer(self, text, button):
        """Reads the message that is open and answers it."""
        def look():
            for window in self.application:
                if window.getRoleName() == "alert" and self.is_in(window, "label", text):
                    return window
            return None

        alert = self.wait(look, f"the message {text!r}")
        self.press(button, top=alert)
        self.wait(lambda: not look(), f"the message {text!r} to close")

    def is_in(self, window, role, name):
        return any(o.getRoleName() == role and o.name == name for o in self.all_in(window))

    def name_file(self, path):
        """Types a path into the file dialog."""
        dialog = self.wait(self.find_file_dialog, "a file dialog")
        self.wait(lambda: dialog.getState().contains(pyatspi.STATE_ACTIVE), "the dialog in front")
        self.keys("ctrl+a")
        self.type(path)
        self.keys("Return")
        # The program may end with the file that it asked for.
        self.wait(lambda: self.has_ended() or not self.find_file_dialog(), "the file dialog to close")

    def rows_of(self, table, window):
        """The texts of a table's rows; "none" stands for an empty one."""
        found = self.find("table", table, self.find(*window))
        columns = sum(thing.getRoleName() == "table column header" for thing in found)
        cells = [thing.name for thing in found if thing.getRoleName() == "table cell"]
        return [cells[i:i + columns] for i in range(0, len(cells), columns)]

    def find_file_dialog(self):
        for thing in self.application:
            if thing is not None and thing.getRoleName() in ("file chooser", "dialog"):
                if self.is_showing(thing) and any(
                    o.getRoleName() == "text" and o.name.startswith("File") for o in self.all_in(thing)
                ):
                    return thing
        return None

    def screenshot(self, path):
        subprocess.run(["import", "-window", "root", path], check=True)

    def fill_the_screen(self, title):
        subprocess.run(
            ["xdotool", "search", "--onlyvisible", "--name", f"^{title}$", "windowmove", "0", "0", "windowsize", "--sync", "100%", "100%"],
            check=True,
        )

    def settle(self):
        """Lets what was set off be painted."""
        time.sleep(0.4)

    def has_ended(self):
        return self.process.poll() is not None

    def wait_for_end(self):
        return self.process.wait(timeout=PATIENCE)

    def leave(self):
        if not self.has_ended():
            self.process.kill()
            self.process.wait()
