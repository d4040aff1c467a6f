"""A radiograph in the measuring window, as a person with a mouse or with keys alone works on it."""
import re


class RadiographOnScreen:
    """Knows of the picture what the window shows: where the view is, and the status line."""

    def __init__(self, person, window):
        self.person = person
        self.window = person.find(*window)
        self.view = person.find("image", "Radiograph", self.window)
        bars = [thing for thing in self.window if thing.getRoleName() == "status bar"]
        self.labels = [thing for thing in bars[0] if thing.getRoleName() == "label"]

    def wait(self, look, what):
        return self.person.wait(look, what)

    def _told(self, pattern):
        for label in self.labels:
            found = re.match(pattern, label.name)
            if found:
                return [int(number) for number in found.groups()]
        return None

    def pointed_at(self):
        """Column and row under the pointer or the cross-hair, or of the chosen point."""
        return self._told(r"(\d+), (\d+): \d+$")

    def zoom(self):
        """In percent."""
        return self._told(r"Zoom (\d+) %")[0]

    def is_told(self, column, row, slack):
        told = self.pointed_at()
        return told and abs(told[0] - column) <= slack and abs(told[1] - row) <= slack


class ByMouse(RadiographOnScreen):
    """The picture is fitted when this begins."""

    ZOOM = 1.25  # a notch of the wheel

    def __init__(self, person, window, picture):
        super().__init__(person, window)
        self.picture = picture
        self.area = person.area(self.view)
        self.see_all()

    def see_all(self):
        width, height = self.picture
        self.scale = min(self.area.width / width, self.area.height / height)
        self.middle = ((width - 1) / 2, (height - 1) / 2)

    def screen(self, place):
        """The pixel of the screen that is nearest to a place."""
        return (round(self.area.x + self.area.width / 2 + (place[0] - self.middle[0]) * self.scale),
                round(self.area.y + self.area.height / 2 + (place[1] - self.middle[1]) * self.scale))

    def place(self, screen):
        return (self.middle[0] + (screen[0] - self.area.x - self.area.width / 2) / self.scale,
                self.middle[1] + (screen[1] - self.area.y - self.area.height / 2) / self.scale)

    def point_to(self, place):
        """Moves the mouse to a place, and sees in the status line that it is there."""
        screen = self.screen(place)
        self.person.move_to(*screen)

        def is_there():
            if self.is_told(*self.place(screen), 1):
                return True
            self.person.waver_at(*screen)
            return False

        self.wait(is_there, f"the pointer at {place}")
        return screen

    def come_near(self, place, notches=4):
        screen = self.point_to(place)
        fixed = self.place(screen)  # stays under the pointer
        self.person.turn_wheel(-notches)
        self.scale *= self.ZOOM ** notches
        self.middle = tuple(
            fixed[i] - (screen[i] - (self.area.x, self.area.y)[i]
                        - (self.area.width, self.area.height)[i] / 2) / self.scale
            for i in range(2))
        self.wait(lambda: self.zoom() == round(100 * self.scale), "the zoom")

    def step_back(self):
        self.person.keys("ctrl+0")
        self.see_all()
        self.wait(lambda: self.zoom() == round(100 * self.scale), "the whole picture")

    def click_at(self, places, near):
        """Marks places, seen from near."""
        self.come_near(near)
        for place in places:
            self.point_to(place)
            self.person.click_here()
        self.step_back()

    def drag_slowly(self, start, end, look):
        """Drags what is at one place to another. `look` is called before it is let go."""
        self.come_near(end)
        screen = self.point_to(start)
        target = self.screen(end)
        steps = 6
        self.person.hold_mouse()
        for i in range(1, steps + 1):
            self.person.move_to(*(round(screen[k] + (target[k] - screen[k]) * i / steps) for k in (0, 1)))
        self.wait(lambda: self.is_told(*self.place(target), 1), "the pointer at the end of the drag")
        look()
        self.person.let_go_mouse()
        self.step_back()


class ByKeys(RadiographOnScreen):
    def focus(self, key="Tab"):
        self.person.tab_to(self.view, "the radiograph", key)

    def go_to(self, place):
        """Moves the cross-hair, or the chosen point, to the nearest whole pixel."""
        column, row = (round(number) for number in place)
        before = self.wait(self.pointed_at, "the place in the status line")
        self._walk(column - before[0], "Left", "Right")
        self._walk(row - before[1], "Up", "Down")
        self.wait(lambda: self.is_told(column, row, 0), f"{place}")

    def _walk(self, way, back, forth):
        key = forth if way > 0 else back
        coarse, fine = divmod(abs(way), 20)
        steps = [f"ctrl+{key}"] * coarse + [key] * fine
        if steps:
            self.person.keys("--delay", "4", *steps)  # ms

    def set_at(self, place):
        self.go_to(place)
        self.person.keys("Return")
