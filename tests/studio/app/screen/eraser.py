"""AI Erase on a screen, worked by a person who knows what its buttons look like."""

import os

from editor import Editor
from screen import PATIENCE, Failure, Icon, wait_for

TOOLS = {"magic box": "icon16_crop_add", "brush": "icon24_selectarea", "eraser": "icon24_erase_off"}
BAR_HEIGHT = 32  # widget pixels: of the bar over the player


class Eraser(Editor):
    """Coordinates that are counted from an edge of the window are in widget pixels."""

    def __init__(self, *arguments):
        super().__init__(*arguments)
        resources = os.path.join(self.skin, "..", "..", "..", "resources", "Resource")
        suffix = "@2x.png" if self.scale == 2 else ".png"
        self.tools = {tool: Icon(os.path.join(resources, name + "-normal" + suffix))
                      for tool, name in TOOLS.items()}

    def at(self, x, y):
        """Counted from the left or, where it is negative, from the right; the same from top and bottom."""
        left, top, right, bottom = self.box()
        return ((left if x >= 0 else right) + round(x * self.scale),
                (top if y >= 0 else bottom) + round(y * self.scale))

    def area(self, left, top, right, bottom):
        return self.at(left, top) + self.at(right, bottom)

    # The workspace.

    def overlays(self):
        """Boxes of the windows that float over the player, the largest first."""
        boxes = [self.screen.box(window) for window in self.screen.windows_of("zkstudio")
                 if window != self.window]
        return sorted(boxes, key=lambda box: (box[1] - box[3]) * (box[2] - box[0]))

    def open_erasing(self, name):
        left, top, right, bottom = self.box()
        wait_for("the clip", lambda: self.screen.picture().colours(
            (left + (right - left) // 3, top, right - (right - left) // 3, bottom), 8) > 500)
        self.screen.key("ctrl+j")
        wait_for("the workspace", self.overlays)
        canvas = self.canvas()
        self.shoot(name)
        return canvas

    def check_overlays(self, times):
        """Whether they are back, each in its place, when the window is restored."""
        places = self.overlays()
        for _ in range(times):
            self.restore_hastily()
            wait_for("the windows over the player", lambda: self.overlays() == places)

    def choose(self, tool):
        icon = self.tools[tool]
        x, y = wait_for(f"the tool {tool}", lambda: self.screen.picture().find_icon(icon, self.box()))
        self.screen.click(x, y)
        self.screen.park(self.box())
        around = (x - 30 * self.scale, y - 10 * self.scale, x + 30 * self.scale, y + 10 * self.scale)
        wait_for(f"the chosen {tool}", lambda: self.screen.picture().find_bar(
            self.chosen, 4 * self.scale, around))

    def mark(self, points, name):
        """Drags slowly with the chosen tool, and waits for what comes of it."""
        steps = 8
        line = [(a[0] + (b[0] - a[0]) * i // steps, a[1] + (b[1] - a[1]) * i // steps)
                for a, b in zip(points, points[1:]) for i in range(steps)]
        self.screen.press(line + points[-1:])
        dragged = self.screen.settled()
        self.shoot("drag-" + name, dragged)
        self.screen.release()
        self.screen.park(self.box())
        (x, y), reach = points[0], 3 * self.scale
        start = (x - reach, y - reach, x + reach, y + reach)
        wait_for(f"the end of {name}",
                 lambda: self.screen.picture().part(start) != dragged.part(start))
        wait_for("an object to erase", self.can_create)
        self.shoot("marked-" + name, self.screen.settled())

    def can_create(self):
        """The button is filled with colours when it can be pressed."""
        x, y = self.at(-121, -64)
        blue, green, red = self.screen.picture().row(y, x, x + 1)[:3]
        return blue > 2 * red and green > 2 * red

    def preview(self):
        """Tracks with the bar over the player, until it offers to save."""
        def bar(first, last):
            left, top, right, _ = wait_for("the bar", lambda: next(
                (box for box in self.overlays() if box[3] - box[1] == BAR_HEIGHT * self.scale), None))
            return left, top + first * self.scale, right, top + last * self.scale
        left, top, right, _ = bar(0, BAR_HEIGHT)
        player = self.overlays()[0]
        self.screen.click((player[0] + player[2]) // 2, top + 12 * self.scale)
        self.screen.park(self.box())

        def is_tracked():  # where the button to save is, and the thin bar of the progress is not
            return self.screen.picture().find_bar(self.accent, 20 * self.scale, bar(7, 10))
        wait_for("progress", lambda: is_tracked() or self.screen.picture().find_bar(
            self.accent, 8 * self.scale, bar(8, 24)))
        self.shoot("tracking")
        wait_for("the end of tracking", is_tracked, 2 * PATIENCE)
        self.shoot("tracked", self.screen.settled())

    def create(self):
        wait_for("Create", self.can_create)
        self.screen.click(*self.at(-73, -64))

    def log_in(self, name):
        self.screen.window("^Log In$")
        self.screen.settled()
        self.screen.type(name)
        self.shoot("log-in", self.screen.settled())
        self.screen.key("Return")
        wait_for("the end of the log-in", lambda: not self.screen.windows("^Log In$"))

    # The task and its result.

    def wait_for_result(self, kind):
        wait_for("the editor's page", lambda: not self.overlays())
        card = self.area(8, -110, 300, -40)
        is_done = lambda: self.screen.picture().colours(self.area(300, -80, 360, -56), 1) > 8
        wait_for("erasing", lambda: is_done() or self.screen.picture().find_bar(
            self.accent, 6 * self.scale, card))
        self.shoot("erasing-" + kind)
        wait_for("the result", is_done, 2 * PATIENCE)
        self.shoot("erased-" + kind, self.screen.settled())
        self.screen.click(*self.at(330, -68))

    def compare(self, kind):
        """Drags the divider to the left, and holds the key that shows what was before."""
        left, top, right, bottom = self.screen.box(self.screen.window("^Erased from "))
        view = (left + 20 * self.scale, top + 70 * self.scale, right - 20 * self.scale,
                bottom - 130 * self.scale)
        middle, y = (left + right) // 2, (top + bottom) // 2 - 50 * self.scale
        before = self.screen.settled()
        self.shoot("result-" + kind, before)
        place = left + (right - left) // 8
        self.screen.drag([(middle + (place - middle) * i // 10, y) for i in range(11)])
        self.screen.park((left, top, right, bottom))
        after = self.screen.settled()
        self.shoot("compared-" + kind, after)
        changed = after.difference(before, view)
        if not changed or changed[0] > place or changed[2] < middle:
            raise Failure("the divider does not move")
        self.screen.xdotool("keydown", "space")
        original = self.screen.settled()
        self.screen.xdotool("keyup", "space")
        balloon = (place + 4 * self.scale, view[1], middle - 20 * self.scale, view[3])
        if original.part(balloon) != before.part(balloon):
            raise Failure("the key does not show the original")
        wait_for("the result again", lambda: self.screen.picture().part(view) == after.part(view))

    def save_result(self, kind):
        left, _, right, bottom = self.screen.box(self.screen.window("^Erased from "))
        self.click_filled("Save", (left, bottom - 60 * self.scale, right, bottom))
        wait_for("the end of the dialog", lambda: not self.screen.windows("^Erased from "))
        self.wait_for_page()
        box, picture = self.settled()
        self.shoot("saved-" + kind, picture)
        player = (box[0] + (box[2] - box[0]) // 4, box[1] + (box[3] - box[1]) // 10,
                  box[0] + (box[2] - box[0]) // 2, box[1] + (box[3] - box[1]) // 2)
        with_result = picture.part(player)
        self.screen.key("ctrl+z")
        wait_for("the original", lambda: self.screen.picture().part(player) != with_result)
        self.screen.key("ctrl+y")
        wait_for("the result", lambda: self.screen.picture().part(player) == with_result)
