"""Cuts the balloon out of the sample clip as a person does: in the program's windows, with mouse and keys.

    run.py (smart_cutout | windows) PROGRAM OVERLAP SKIN SHOTS

smart_cutout: from the clip to an exported file, whose alpha is compared with the true mattes.
windows: at twice the size, whether the translucent canvas, which is a window of its own, goes where the
picture goes.
"""

import glob
import os
import shutil
import subprocess
import sys

from editor import Editor
from screen import PATIENCE, PROGRAMS, Failure, Screen, load_png, wait_for

SKIPPED = 77  # CTest's SKIP_RETURN_CODE
FRAMES = 24
PAINTED_FRAME = 8
LEAST_OVERLAP = 0.9


def on_screen(canvas, matte, points):
    left, top, right, bottom = canvas
    return [(left + round((x + 0.5) * (right - left) / matte.width),
             top + round((y + 0.5) * (bottom - top) / matte.height)) for x, y in points]


def stroke_in(matte, shares, inset):
    """A zigzag through the object of a matte, at these shares of its height."""
    rows = {}
    for y in range(matte.height):
        inside = [x for x in range(matte.width) if matte.row(y, x, x + 1)[0] > 200]
        if inside:
            rows[y] = inside
    ys = sorted(rows)
    points = []
    for number, share in enumerate(shares):
        y = ys[int(share * (len(ys) - 1))]
        ends = [(rows[y][0] + inset, y), (rows[y][-1] - inset, y)]
        points += ends[::-1] if number % 2 else ends
    return points


def smart_cutout(editor, folder):
    screen = editor.screen
    project, exported = os.path.join(folder, "balloon.zkproj"), os.path.join(folder, "balloon.mov")
    editor.start(os.path.join(folder, "sample.mkv"))
    canvas = editor.open_workspace()
    screen.key(*["Right"] * PAINTED_FRAME)
    screen.settled()
    editor.shoot("workspace")
    editor.check_paint(canvas, "as opened")

    matte = load_png(os.path.join(folder, "mattes", f"{PAINTED_FRAME:05}.png"))
    editor.paint(on_screen(canvas, matte, stroke_in(matte, (0.1, 0.3, 0.5, 0.65), 16)), "balloon")
    before = screen.picture().part(canvas)
    editor.paint(on_screen(canvas, matte, stroke_in(matte, (0.95,), 3)), "basket")
    editor.undo_and_redo(canvas, before)
    editor.track_both()
    editor.choose_preset(row=4, column=2)
    editor.apply()

    editor.save(project)
    editor.quit()

    editor.start()
    editor.open(project)
    editor.export(exported)
    editor.quit()
    return exported


def windows(editor, folder):
    screen = editor.screen
    editor.start(os.path.join(folder, "sample.mkv"))
    canvas = editor.open_workspace()
    editor.check_paint(canvas, "as opened")
    matte = load_png(os.path.join(folder, "mattes", "00000.png"))
    editor.paint(on_screen(canvas, matte, stroke_in(matte, (0.1, 0.3, 0.5, 0.65), 16)), "balloon")

    editor.drag_window((60, 40))
    editor.check_paint(editor.canvas(), "after a move")
    editor.drag_corner((-150, -110))
    editor.check_paint(editor.canvas(), "after a resize")
    editor.turn_wheel(editor.canvas(), 3)
    editor.check_paint(editor.canvas(), "when zoomed")
    screen.key("ctrl+shift+f")

    screen.xdotool("windowminimize", editor.window)
    wait_for("the canvas to go with its window", lambda: not editor.canvas_window())
    editor.shoot("minimised")
    screen.xdotool("windowactivate", editor.window)
    wait_for("the canvas to come back", editor.canvas_window)
    editor.check_paint(editor.canvas(), "after a restore")

    editor.maximise()
    editor.check_paint(editor.canvas(), "when maximised")
    screen.key("F11")
    wait_for("the full screen", lambda: editor.box() == (0, 0, screen.width, screen.height))
    editor.check_paint(editor.canvas(), "on the full screen")
    screen.key("F11")
    wait_for("the end of the full screen", lambda: editor.box()[1] > 0)
    editor.check_paint(editor.canvas(), "after the full screen")

    editor.track_both()
    editor.apply()
    editor.check_paint(editor.open_workspace(), "after another page")
    screen.key("ctrl+w")
    editor.wait_for_page()
    editor.save(os.path.join(folder, "balloon.zkproj"))
    editor.quit()


def overlap(program, exported, folder):
    result = subprocess.run([program, exported, os.path.join(folder, "mattes")], text=True,
                            capture_output=True, timeout=PATIENCE)
    if result.returncode != 0:
        raise Failure(result.stderr)
    return float(result.stdout)


def complaints(log):
    """Without what Qt says when the window manager has taken a frame away that Qt asks it about."""
    return [line for line in log.splitlines() if line and "XCB error: 3 (BadWindow)" not in line]


def main(what, program, overlap_program, skin, shots):
    missing = [name for name in PROGRAMS if not shutil.which(name)]
    if missing:
        print("skipped: needs", ", ".join(missing))
        return SKIPPED
    if what != "smart_cutout":
        shots = os.path.join(shots, what)
    os.makedirs(shots, exist_ok=True)
    for old in glob.glob(os.path.join(shots, "*.png")):
        os.remove(old)
    scale = 2 if what == "windows" else 1
    with Screen(1600 * scale, 1000 * scale) as screen:
        folder = screen.folder.name
        subprocess.run([program, "sample", folder, "--frames", str(FRAMES)], check=True, timeout=PATIENCE,
                       stdout=subprocess.DEVNULL)
        editor = Editor(screen, program, skin, os.path.join(shots, ""), scale)
        try:
            if what == "windows":
                windows(editor, folder)
            else:
                value = overlap(overlap_program, smart_cutout(editor, folder), folder)
                print(f"overlap of the exported alpha with the true mattes: {value}")
                if value < LEAST_OVERLAP:
                    raise Failure("too little of the object is in the exported clip")
            if complaints(screen.log("zkstudio")):
                raise Failure("the editor has something to tell")
        except (Failure, subprocess.TimeoutExpired) as failure:
            print("FAILED:", failure)
            print(screen.log("zkstudio"))
            editor.shoot("failed")
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
