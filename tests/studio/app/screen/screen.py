"""A screen of its own for a program: X server, window manager, compositor, mouse and keyboard.

What is on the screen is read from the X server's frame buffer: what a person would see, after composition.
Coordinates are device pixels of the screen; a box is (left, top, right, bottom), right and bottom excluded.
"""

import ctypes
import mmap
import os
import re
import signal
import struct
import subprocess
import tempfile
import time
import zlib

PROGRAMS = ("Xvfb", "openbox", "picom", "xdotool", "xwininfo")
POLL = 0.05  # seconds
PATIENCE = 30  # seconds; far more than anything takes that works


class Failure(Exception):
    pass


def wait_for(what, condition, patience=PATIENCE):
    """The first true value of condition()."""
    end = time.monotonic() + patience
    while time.monotonic() < end:
        value = condition()
        if value:
            return value
        time.sleep(POLL)
    raise Failure(f"waited {patience} s for {what}")


class Picture:
    """Pixels of four bytes: blue, green, red, and alpha in icons, which is anything on a screen."""

    def __init__(self, width, height, data):
        self.width, self.height, self.data = width, height, data
        self.words = memoryview(data).cast("I")

    def row(self, y, left, right):
        return self.data[(y * self.width + left) * 4:(y * self.width + right) * 4]

    def part(self, box):
        left, top, right, bottom = box
        return b"".join(self.row(y, left, right) for y in range(top, bottom))

    def colours(self, box, step):
        """How many there are, looking at every so many pixels."""
        left, top, right, bottom = box
        return len({word for y in range(top, bottom, step) for word in
                    self.words[y * self.width + left:y * self.width + right:step]})

    def difference(self, other, box):
        """The box around what differs inside the given box; None when all is the same."""
        left, top, right, bottom = box
        rows, columns = [], set()
        for y in range(top, bottom):
            if self.row(y, left, right) != other.row(y, left, right):
                rows.append(y)
                start = y * self.width
                columns.update(x for x in range(left, right)
                               if self.words[start + x] != other.words[start + x])
        return (min(columns), rows[0], max(columns) + 1, rows[-1] + 1) if rows else None

    def find_bar(self, colour, length, box):
        """Middle of the first run of so many pixels of one colour (red, green, blue), or None."""
        left, top, right, bottom = box
        blue_first = bytes(reversed(colour))
        for y in range(top, bottom):
            row = self.row(y, left, right)
            if blue_first in row:
                run = bytes(row[at:at + 3] == blue_first for at in range(0, len(row), 4))
                at = run.find(b"\1" * length)
                if at >= 0:
                    return left + at + length // 2, y
        return None

    def find_icon(self, icon, box):
        """Centre of the first place that shows the icon: its opaque pixels, and another where it has none."""
        left, top, right, bottom = box
        (first_x, first_y), colour = icon.inked[0]
        for y in range(max(0, top), min(bottom, self.height - icon.height)):
            row = self.row(y + first_y, 0, self.width)
            at = row.find(colour, left * 4)
            while 0 <= at < right * 4:
                x = at // 4 - first_x
                if at % 4 == 0 and 0 <= x <= self.width - icon.width and self._shows(icon, x, y):
                    return x + icon.width // 2, y + icon.height // 2
                at = row.find(colour, at + 1)
        return None

    def _shows(self, icon, x, y):
        def at(point):
            start = ((y + point[1]) * self.width + x + point[0]) * 4
            return self.data[start:start + 3]
        return (all(at(point) == colour for point, colour in icon.inked)
                and all(at(point) not in icon.colours for point in icon.blank))

    def save(self, path):
        rgb = bytearray(self.width * self.height * 3)
        for channel in range(3):
            rgb[channel::3] = self.data[2 - channel::4]
        stride = self.width * 3
        lines = b"".join(b"\0" + rgb[y * stride:(y + 1) * stride] for y in range(self.height))

        def chunk(kind, body):
            return (struct.pack(">I", len(body)) + kind + body
                    + struct.pack(">I", zlib.crc32(kind + body)))
        with open(path, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n"
                       + chunk(b"IHDR", struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0))
                       + chunk(b"IDAT", zlib.compress(lines, 1)) + chunk(b"IEND", b""))


def load_png(path):
    """A picture of eight bits a sample, grey or with alpha and not interlaced, as icons and mattes are."""
    with open(path, "rb") as file:
        data = file.read()
    at, body = 8, b""
    while at < len(data):
        size, kind = struct.unpack(">I4s", data[at:at + 8])
        if kind == b"IHDR":
            width, height, *form = struct.unpack(">IIBBBBB", data[at + 8:at + 21])
        if kind == b"IDAT":
            body += data[at + 8:at + 8 + size]
        at += size + 12
    samples = {(8, 0, 0, 0, 0): 1, (8, 6, 0, 0, 0): 4}[tuple(form)]
    raw, stride, pixels = zlib.decompress(body), width * samples, bytearray()
    above = bytearray(stride)
    for start in range(0, len(raw), stride + 1):
        above = _unfilter(raw[start], bytearray(raw[start + 1:start + 1 + stride]), above, samples)
        pixels += above
    if samples == 1:
        pixels = b"".join(bytes((grey, grey, grey, 255)) for grey in pixels)
    else:
        pixels[0::4], pixels[2::4] = pixels[2::4], pixels[0::4]
    return Picture(width, height, bytes(pixels))


class Icon(Picture):
    """Knows where it is opaque, with the colours, and where it is transparent."""

    def __init__(self, path):
        picture = load_png(path)
        super().__init__(picture.width, picture.height, picture.data)
        points = [(x, y) for y in range(self.height) for x in range(self.width)]
        alpha = dict(zip(points, self.data[3::4]))
        self.inked = [(p, self.row(p[1], p[0], p[0] + 1)[:3]) for p in points if alpha[p] == 255]
        self.blank = [p for p in points if alpha[p] == 0]
        self.colours = {colour for _, colour in self.inked}


def _unfilter(kind, line, above, samples):
    for i, value in enumerate(line):
        left, up = (line[i - samples] if i >= samples else 0), above[i]
        corner = above[i - samples] if i >= samples else 0
        if kind == 4:
            slope = left + up - corner
            nearest = min((left, up, corner), key=lambda c: abs(slope - c))
        line[i] = (value + (0, left, up, (left + up) // 2, kind == 4 and nearest)[kind]) & 255
    return line


class Screen:
    """A context, which ends all that it started."""

    def __init__(self, width, height):
        self.width, self.height = width, height
        self.children = []

    def __enter__(self):
        self.folder = tempfile.TemporaryDirectory(prefix="zk-screen-", ignore_cleanup_errors=True)
        try:
            self._start_server()
            self.start(["openbox"])
            wait_for("the window manager", lambda: self.xdotool("get_num_desktops", check=False))
            self.start(["picom", "--backend", "xrender", "--config", os.devnull])
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for child in reversed(self.children):
            end(child)
        self.folder.cleanup()

    def path(self, name):
        return os.path.join(self.folder.name, name)

    def _start_server(self):
        for name in ("home", "runtime", "pixels"):
            os.mkdir(self.path(name), mode=0o700)
        reading, writing = os.pipe()
        arguments = ["Xvfb", "-displayfd", str(writing), "-fbdir", self.path("pixels"),
                     "-screen", "0", f"{self.width}x{self.height}x24", "-dpi", "96",
                     "-nolisten", "tcp", "-noreset"]
        self.environment = dict(os.environ)
        self.start(arguments, pass_fds=(writing,))
        os.close(writing)
        with os.fdopen(reading) as answer:
            number = answer.readline().strip()
        if not number:
            raise Failure("Xvfb does not start: " + self.log("Xvfb"))
        for name in ("WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "LANGUAGE", "XDG_CONFIG_HOME",
                     "XDG_DATA_HOME", "XDG_CACHE_HOME", "XAUTHORITY", "DBUS_SESSION_BUS_ADDRESS"):
            self.environment.pop(name, None)
        self.environment.update(DISPLAY=":" + number, QT_QPA_PLATFORM="xcb", LC_ALL="C.UTF-8",
                                HOME=self.path("home"), XDG_RUNTIME_DIR=self.path("runtime"))
        with open(self.path("pixels/Xvfb_screen0"), "rb") as file:
            self._buffer = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
        header = struct.unpack(">25I", self._buffer[:100])  # of a window dump, version 7
        self._first, stride = header[0] + header[19] * 12, header[12]
        if stride != self.width * 4:
            raise Failure("the rows of the frame buffer have gaps")

    def start(self, arguments, **more):
        with open(self.path(os.path.basename(arguments[0]) + ".log"), "ab") as log:
            child = subprocess.Popen(arguments, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                     env=self.environment, preexec_fn=_die_with_parent, **more)
        self.children.append(child)
        return child

    def log(self, program):
        with open(self.path(program + ".log"), encoding="utf-8", errors="replace") as file:
            return file.read()

    def picture(self):
        end = self._first + self.width * self.height * 4
        return Picture(self.width, self.height, self._buffer[self._first:end])

    def settled(self, still=0.3):
        """What is on the screen when nothing has moved for so many seconds."""
        last, since = None, time.monotonic()
        end = since + PATIENCE
        while time.monotonic() < end:
            picture = self.picture()
            if not last or picture.data != last.data:
                last, since = picture, time.monotonic()
            elif time.monotonic() - since > still:
                return picture
            time.sleep(POLL)
        raise Failure("the screen does not come to rest")

    def xdotool(self, *arguments, check=True):
        result = subprocess.run(["xdotool", *map(str, arguments)], env=self.environment, text=True,
                                capture_output=True, timeout=PATIENCE)
        if check and result.returncode != 0:
            raise Failure(f"xdotool {arguments}: {result.stderr}")
        return result.stdout

    def point(self, x, y):
        self.xdotool("mousemove", "--sync", x, y)

    def park(self, box):
        """Moves the pointer out of the way, to the corner of a box."""
        self.point(box[2] - 3, box[3] - 3)

    def click(self, x, y, button=1):
        self.xdotool("mousemove", "--sync", x, y, "click", button)

    def press(self, points, pace=0.01):
        """Presses at the first point and drags through the others; release() ends it."""
        chain = ["mousemove", "--sync", *points[0], "mousedown", 1]
        for point in points[1:]:
            chain += ["sleep", pace, "mousemove", *point]
        self.xdotool(*chain)

    def release(self):
        self.xdotool("mouseup", 1)

    def drag(self, points, pace=0.01):
        self.press(points, pace)
        self.release()

    def key(self, *keys):
        self.xdotool("key", *keys)

    def type(self, text):
        self.xdotool("type", "--delay", 2, text)

    def windows(self, name):
        """Ids of the windows on screen whose title has the pattern."""
        return self.xdotool("search", "--onlyvisible", "--name", name, check=False).split()

    def windows_of(self, program):
        """Those on screen, whatever their titles."""
        return self.xdotool("search", "--onlyvisible", "--classname", f"^{program}$", check=False).split()

    def window(self, name):
        return wait_for(f"the window {name}", lambda: self.windows(name))[-1]

    def box(self, window):
        """Without the frame that the window manager puts around it."""
        report = subprocess.run(["xwininfo", "-id", window], env=self.environment, text=True,
                                capture_output=True, check=True, timeout=PATIENCE).stdout
        x, y, width, height = (int(re.search(rf"{name}: +(-?\d+)", report)[1]) for name in (
            "Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))
        return x, y, x + width, y + height

    def title(self, window):
        return self.xdotool("getwindowname", window).strip()


def _die_with_parent():
    die_with_parent = 1  # PR_SET_PDEATHSIG: whoever kills the test leaves nothing behind
    ctypes.CDLL(None).prctl(die_with_parent, signal.SIGKILL)


def end(child):
    for stop in (child.terminate, child.kill):
        if child.poll() is None:
            stop()
            try:
                child.wait(timeout=5)
            except subprocess.TimeoutExpired:
                pass
