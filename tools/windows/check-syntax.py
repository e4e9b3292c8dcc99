#!/usr/bin/env python3
"""Compiles for Windows, to nothing: replays a native build through MinGW with -fsyntax-only.

    check-syntax.py BUILD_DIR

BUILD_DIR has been built (generated sources are compiled too) without the studio, or with it: only what is
to be portable is checked. Qt's headers are those of the native build; they decide by the compiler what they
declare. Finds headers and functions that Windows lacks, and what is wrong in the branches for Windows; not
what only a linker or another compiler finds. A file that was found good is checked again when something
that it includes has changed.
"""

import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
COMPILER = "x86_64-w64-mingw32-g++-posix"
PORTABLE = re.compile(
    r"(ZkSmartKeying|host|studio/(core|utility|account|widgets|language)"
    r"|tests/(fakes|headers|support))/")
# Read once instead of with every source, where they take most of the time. That each source includes what
# it uses is what the native build finds.
PRECOMPILED = """#include <QAbstractItemModel>
#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>
#include <QVariant>
#include <functional>
#include <memory>
"""


def portable_sources(build, commands):
    """The commands of what is to compile for Windows, be it a source or generated from sources."""
    for entry in commands:
        path = pathlib.Path(entry["file"])
        base = build if build in path.parents else ROOT
        if base in path.parents and PORTABLE.match(path.relative_to(base).as_posix()):
            yield entry


def windows_arguments(command):
    """What says how to read the source; neither the machine nor a header that was compiled for it."""
    words = iter(shlex.split(command))
    for word in words:
        if word in ("-isystem", "-I", "-D"):
            path = next(words)
            # The system's own headers would hide those of Windows.
            if path.rstrip("/") != "/usr/include" and "mkspecs/linux" not in path:
                yield from (word, path)
        elif word == "-std=c++17" or word.startswith(("-I", "-D", "-W")) and word != "-Winvalid-pch":
            yield word


def uses_widgets(arguments):
    return "-DQT_WIDGETS_LIB" in arguments


def precompiled_header(arguments, results):
    """Qt's headers as the arguments of a source that uses Qt Widgets make them: good for all of these."""
    settings = [word for word in arguments if not word.startswith(("-DZ", "-DQT_TEST", "-I"))]
    text = f"// {shlex.join(settings)}\n{PRECOMPILED}"
    header, compiled = results / "qt.h", results / "qt.h.gch"
    if not compiled.exists() or header.read_text() != text:
        header.write_text(text)
        subprocess.run([COMPILER, *settings, "-x", "c++-header", header, "-o", compiled], check=True)
    return header


def dependencies(list_file):
    """The files that a list which the compiler wrote for make names."""
    text = list_file.read_text().replace("\\\n", " ").split(": ", 1)[1]
    return [name.replace("\0", " ") for name in text.replace("\\ ", "\0").split()]


def is_still_good(arguments, stamp, list_file):
    try:
        checked = stamp.stat().st_mtime_ns
        return stamp.read_text() == arguments and all(
            os.stat(name).st_mtime_ns < checked for name in dependencies(list_file))
    except OSError:
        return False


def check(entry, header, results):
    """What the compiler says of one source; None when nothing had to be done."""
    output = shlex.split(entry["command"])
    name = re.sub(r"[^A-Za-z0-9]+", "_", output[output.index("-o") + 1])
    stamp, list_file = results / (name + ".good"), results / (name + ".d")
    arguments = list(windows_arguments(entry["command"]))
    if uses_widgets(arguments):
        arguments = ["-Winvalid-pch", "-include", str(header), *arguments]
    line = shlex.join([COMPILER, "-fsyntax-only", *arguments, entry["file"]])
    if is_still_good(line, stamp, list_file):
        return None
    # As old as the beginning of the check: what changes meanwhile will be checked again.
    stamp.write_text("")
    started = stamp.stat().st_mtime_ns
    compiler = subprocess.run(shlex.split(line) + ["-MD", "-MF", list_file], cwd=entry["directory"],
                              capture_output=True, text=True)
    if compiler.returncode == 0:
        stamp.write_text(line)
        os.utime(stamp, ns=(started, started))
    else:
        compiler.stderr += f"failed: {line}\n"
    return compiler


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    if not shutil.which(COMPILER):
        sys.exit(f"{COMPILER} is missing (Debian: g++-mingw-w64-x86-64-posix)")
    build = pathlib.Path(sys.argv[1]).resolve()
    results = build / "windows-syntax"
    results.mkdir(exist_ok=True)
    commands = json.loads((build / "compile_commands.json").read_text())
    entries = list(portable_sources(build, commands))
    header = precompiled_header(
        next(filter(uses_widgets, (list(windows_arguments(entry["command"])) for entry in entries))), results)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        outcomes = list(pool.map(lambda entry: check(entry, header, results), entries))
    checked = [outcome for outcome in outcomes if outcome]
    failed = [outcome for outcome in checked if outcome.returncode]
    for outcome in failed:
        sys.stderr.write(outcome.stderr)
    print(f"{len(entries)} sources, {len(checked)} checked, {len(failed)} failed")
    # Nothing to check is a wrong folder, not good code.
    sys.exit(1 if failed or not entries else 0)


if __name__ == "__main__":
    main()
