"""ZkStudio on a screen, worked by a person who knows what its buttons look like."""

import json
import os

from screen import PATIENCE, Failure, Icon, wait_for

NEAR = 2  # device pixels between the pointer and its paint


class Editor:
    def __init__(self, screen, program, skin, shots, scale=1):
        self.screen, self.program, self.skin, self.scale = screen, program, skin, scale
        self.shots, self.shot_count = shots, 0
        with open(os.path.join(skin, "palette.json"), encoding="utf-8") as file:
            palette = {entry["name"]: entry["value"] for entry in json.load(file)["colors"]}
        self.accent, self.tracked, self.chosen = (
            tuple(bytes.fromhex(palette[name][1:])) for name in ("Accent", "TimelineTracked", "ToolOn"))
        self.icons = {}
        screen.environment["QT_SCALE_FACTOR"] = str(scale)

    def start(self, *files):
        self.process = self.screen.start([self.program, *files])
        self.window = self.screen.window(" ZkStudio$")

    def quit(self):
        self.screen.key("ctrl+q")
        code = self.process.wait(timeout=PATIENCE)
        if code != 0:
            raise Failure(f"the editor ended with {code}")

    def shoot(self, name, picture=None):
        self.shot_count += 1
        path = f"{self.shots}{self.shot_count:02}-{name}.png"
        (picture or self.screen.picture()).save(path)

    def box(self):
        return self.screen.box(self.window)

    def canvas_window(self):
        """The window that strokes are drawn on, or None: the only one beside the editor's."""
        others = [window for window in self.screen.windows_of("zkstudio") if window != self.window]
        if len(others) > 1:
            raise Failure(f"the editor has {len(others)} windows beside its own")
        return others[0] if others else None

    def title_bar(self):
        """A place in it. The window manager has put it above the window."""
        left, top, right, _ = self.box()
        return (left + right) // 2, top - 8

    def drag_window(self, by):
        left, top, right, bottom = self.box()
        self._drag_by(self.title_bar(), by)
        wait_for("the window to move", lambda: self.box() == (left + by[0], top + by[1],
                                                              right + by[0], bottom + by[1]))

    def drag_corner(self, by):
        left, top, right, bottom = self.box()
        self._drag_by((right - 4, bottom + 2), by)
        wait_for("the window to change its size", lambda: self.box()[2] != right)

    def maximise(self):
        before = self.box()
        x, y = self.title_bar()
        self.screen.xdotool("mousemove", "--sync", x, y, "click", "--repeat", 2, "--delay", 50, 1)
        wait_for("the window to be maximised", lambda: self.box() != before)

    def restore_hastily(self):
        """Minimises and restores the window twice within a moment, which may cost it those above it."""
        self.screen.xdotool(*["windowminimize", self.window, "windowactivate", self.window] * 2)
        self.settled()

    def _drag_by(self, at, by):
        self.screen.drag([(at[0] + by[0] * i // 10, at[1] + by[1] * i // 10) for i in range(11)])

    def settled(self):
        """Where the window has come to rest, and what is on the screen then. Restored windows fly in."""
        while True:
            box = self.box()
            picture = self.screen.settled()
            if self.box() == box:
                return box, picture

    # What is seen. Icons and filled buttons are not found while they are disabled: they have other colours.

    def find_icon(self, name, box=None):
        if name not in self.icons:
            suffix = "@2x" if self.scale == 2 else ""
            self.icons[name] = Icon(os.path.join(self.skin, "icons", f"icon24_{name}{suffix}.png"))
        return self.screen.picture().find_icon(self.icons[name], box or self.box())

    def click_icon(self, name):
        self.screen.click(*wait_for(f"the icon {name}", lambda: self.find_icon(name)))

    def find_filled(self, box):
        """A button filled with the accent's colour."""
        return self.screen.picture().find_bar(self.accent, 16 * self.scale, box)

    def click_filled(self, what, box):
        self.screen.click(*wait_for(what, lambda: self.find_filled(box)))

    def canvas(self):
        """Box of the frame in the player: the clip is full of colours, what is around it is plain."""
        (left, top, right, bottom), picture = self.settled()
        x, y, step = left + (right - left) * 2 // 5, top + (bottom - top) * 2 // 5, 4 * self.scale
        reach = 20 * step

        def edge(box, move):
            steps = 0
            while picture.colours([c + steps * m for c, m in zip(box, move)], step) > 10:
                steps += 1
            return steps
        left = x - edge((x - 1, y - reach, x, y + reach), (-1, 0, -1, 0))
        right = x + edge((x, y - reach, x + 1, y + reach), (1, 0, 1, 0))
        top = y - edge((left, y - 1, right, y), (0, -1, 0, -1))
        bottom = y + edge((left, y, right, y + 1), (0, 1, 0, 1))
        return left, top, right, bottom

    # The editor's page.

    def open_workspace(self):
        left, top, right, bottom = self.box()
        wait_for("the clip", lambda: self.screen.picture().colours(
            (left + (right - left) // 3, top, right - (right - left) // 3, bottom), 8) > 500)
        self.shoot("clip")
        self.click_filled("Smart Cutout", (right - (right - left) // 5, top + (bottom - top) // 5,
                                           right, bottom))
        wait_for("the workspace", lambda: self.is_workspace() and self.canvas_window())
        return self.canvas()

    def answer(self, dialog, path):
        """A file dialog, whose field of the name has the focus."""
        window = self.screen.window(f"^{dialog}$")
        self.screen.settled()
        self.screen.key("ctrl+a")
        self.screen.type(path)
        self.shoot(dialog.lower().replace(" ", "-"), self.screen.settled())
        self.screen.key("Return")
        wait_for(f"the end of {dialog}", lambda: not self.screen.windows(f"^{dialog}$"))

    def save(self, path):
        self.screen.key("ctrl+s")
        self.answer("Save Project", path)
        self._wait_for_title(path)
        self.shoot("saved", self.settled()[1])

    def open(self, path):
        self.screen.key("ctrl+o")
        self.answer("Open Project", path)
        self._wait_for_title(path)

    def _wait_for_title(self, path):
        """That of a project without changes that are not saved."""
        title = os.path.splitext(os.path.basename(path))[0] + " "
        wait_for(f"the title {title}", lambda: self.screen.title(self.window).startswith(title))

    def export(self, path):
        left, top, right, bottom = self.box()
        self.click_filled("Export", (right - (right - left) // 5, top, right, top + (bottom - top) // 5))
        dialog = self.screen.window("^Export$")
        box = self.screen.box(dialog)
        self.screen.settled()
        self.screen.key("alt+s", "ctrl+a")
        self.screen.type(path)
        self.shoot("export", self.screen.settled())
        self.click_filled("the button Export", (box[0], box[3] - 80 * self.scale, box[2], box[3]))
        wait_for("the exported file", lambda: os.path.exists(path), 2 * PATIENCE)
        self.shoot("exported", self.screen.settled())
        self.screen.key("Escape")
        wait_for("the end of the dialog", lambda: not self.screen.windows("^Export$"))

    # The workspace.

    def bar(self):
        left, top, right, _ = self.box()
        return left, top, right, top + 90 * self.scale

    def is_workspace(self):
        """Whether it is there and waits for what to do."""
        return self.find_icon("track_both", self.bar())

    def find_apply(self):
        return self.find_filled(self.bar())

    def paint(self, points, name):
        """A stroke, as slow as a hand, and its mask."""
        steps = 8
        line = [(a[0] + (b[0] - a[0]) * i // steps, a[1] + (b[1] - a[1]) * i // steps)
                for a, b in zip(points, points[1:]) for i in range(steps)]
        box = self.box()
        before = self.screen.settled().part(box)
        self.screen.press(line + points[-1:])
        self.shoot(f"stroke-{name}", self.screen.settled())
        self.screen.release()
        self.screen.park(box)
        wait_for(f"the mask of the stroke {name}", lambda: self.find_apply())
        wait_for(f"a change by the stroke {name}", lambda: self.screen.picture().part(box) != before)
        self.shoot(f"mask-{name}", self.screen.settled())

    def check_paint(self, canvas, where):
        """Drags a line over the canvas, looks where it is painted, and takes it back with Esc."""
        left, top, right, bottom = canvas
        start, end, y = left + (right - left) // 4, left + (right - left) * 3 // 4, (top + bottom) // 2
        self.screen.point(left + 8, bottom - 8)
        before = self.screen.settled()
        self.screen.press([(start + (end - start) * i // 10, y) for i in range(11)])
        after = self.screen.settled()
        area = (left, top, right, bottom - 60 * self.scale)
        whole = after.difference(before, area)
        # Without the end, where the pointer is a ring around the paint.
        begin = after.difference(before, (left, top, end - 80 * self.scale, area[3]))
        if not begin:
            raise Failure(f"nothing is painted {where}")
        radius = (begin[3] - begin[1]) / 2
        off = begin[0] + radius - start, begin[1] + radius - y, whole[2] - radius - end
        print(f"{where}: a pen of {2 * radius:.0f} pixels, off by {off[0]:+.1f}, {off[1]:+.1f}; "
              f"at its end by {off[2]:+.1f} with the pointer", flush=True)
        self.shoot("paint-" + where.replace(" ", "-"), after)
        self.screen.key("Escape")
        self.screen.release()
        # The outermost of the pointer is a line around the paint.
        if abs(off[0]) > NEAR or abs(off[1]) > NEAR or abs(off[2]) > NEAR + self.scale:
            raise Failure(f"the paint is not where the pointer was {where}")

    def turn_wheel(self, canvas, steps):
        """Zooms in over the middle of the canvas."""
        before = self.screen.settled().part(canvas)
        self.screen.point((canvas[0] + canvas[2]) // 2, (canvas[1] + canvas[3]) // 2)
        self.screen.xdotool("click", "--repeat", steps, 4)
        wait_for("the zoom", lambda: self.screen.picture().part(canvas) != before)

    def undo_and_redo(self, canvas, before):
        """The mask of the last stroke goes and comes back. Before it the canvas looked so."""
        after = self.screen.settled().part(canvas)
        for name, expected in (("undo", before), ("redo", after)):
            self.click_icon(name)
            self.screen.park(self.box())
            wait_for(name, lambda: self.screen.picture().part(canvas) == expected)

    def track_both(self):
        self.click_icon("track_both")
        self.screen.park(self.box())
        wait_for("tracking", lambda: self.find_icon("stop", self.bar()) or self.is_tracked())
        self.shoot("tracking")
        wait_for("the end of tracking", lambda: self.is_tracked() and self.is_workspace(), 2 * PATIENCE)
        self.shoot("tracked", self.settled()[1])

    def is_tracked(self):
        """Whether the band under the frames reaches from end to end; the playhead stands on it."""
        left, _, right, bottom = self.box()
        box = (left, bottom - 150 * self.scale, right, bottom)
        return self.screen.picture().find_bar(self.tracked, (right - left) // 3, box)

    def choose_preset(self, row, column):
        """Counted from the preset that is none and chosen at first, which has a frame."""
        left, top, right, bottom = self.box()
        panel = (right - 280 * self.scale, top + 230 * self.scale, right, bottom)
        none = wait_for("the presets", lambda: self.screen.picture().find_bar(
            self.accent, 40 * self.scale, panel))
        x, y = none[0] + 80 * column * self.scale, none[1] + (100 * row + 30) * self.scale
        self.screen.click(x, y)
        self.screen.park(panel)
        wait_for("the chosen preset", lambda: self.screen.picture().find_bar(
            self.accent, 40 * self.scale, (x - 40 * self.scale, y - 50 * self.scale,
                                           x + 40 * self.scale, y + 50 * self.scale)))
        self.shoot("preset", self.settled()[1])

    def apply(self):
        self.screen.click(*wait_for("Apply", self.find_apply))
        self.wait_for_page()
        self.shoot("applied", self.settled()[1])

    def wait_for_page(self):
        self.screen.park(self.box())
        wait_for("the editor's page", lambda: self.find_apply() and not self.is_workspace())
        if self.canvas_window():
            raise Failure("the canvas is still there on the editor's page")
