"""A person in front of a Wayland desktop: the same eyes, keyboard and mouse, but no X server in reach
of the program, and no outside hand that could place or raise its windows."""
import pyatspi

from person import Person


class WaylandPerson(Person):
    platform = "wayland"
    unset = ["LANGUAGE", "DISPLAY", "XAUTHORITY", "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"]

    def bring_to_front(self, window):
        """Goes through the windows by the desktop's own key until this one is in front."""
        found = self.find(*window)

        def in_front():
            if found.getState().contains(pyatspi.STATE_ACTIVE):
                return True
            self.keys("super+Tab")
            return False

        self.wait(in_front, f"{window} in front")

    def drag(self, window, right, down):
        """A window learns its place on the screen only when it fills it."""
        self.keys("super+shift+f")
        self.wait(lambda: self._fills_the_screen(window), f"{window} to fill the screen")
        super().drag(window, right, down)
        self.keys("super+shift+f")
        self.wait(lambda: not self._fills_the_screen(window), f"{window} to be itself again")

    def _fills_the_screen(self, window):
        area = self.find(*window).queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        return (area.width, area.height) == (1280, 1024)

    def loaded_plugins(self):
        """The platform plugins in the program's memory."""
        with open(f"/proc/{self.process.pid}/maps", encoding="utf-8") as maps:
            paths = {line.split()[-1] for line in maps if "/plugins/platforms/" in line}
        return sorted(path.split("/")[-1] for path in paths)
