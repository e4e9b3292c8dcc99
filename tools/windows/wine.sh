#!/usr/bin/env bash
# Runs a program for Windows under Wine with Qt's libraries and the compiler's at hand: wine.sh PROGRAM ARGS...
# ZK_WINDOWS_PLATFORM chooses Qt's platform (offscreen, windows) over what QT_QPA_PLATFORM says.
set -eu
. "$(dirname "$0")/settings.sh"

# Wine keeps Qt's variables from the program unless their names begin with WINE.
for name in $(compgen -e | grep '^QT_'); do
    export "WINE$name=${!name}"
done
export WINEQT_QPA_PLATFORM=${ZK_WINDOWS_PLATFORM:-${QT_QPA_PLATFORM:-offscreen}}
# To the standard error instead of the debugger, where QtTest's results would go too.
export WINEQT_FORCE_STDERR_LOGGING=1
# The offscreen platform knows no fonts of its own.
export WINEQT_QPA_FONTDIR='Z:\usr\share\fonts\truetype\dejavu'

windows_path() {
    local path
    for path in "$@"; do
        printf 'Z:%s;' "${path//\//\\}"
    done
}
WINEPATH=$(windows_path "$zk_windows_qt/bin" \
    "$(dirname "$($zk_windows_compiler -print-libgcc-file-name)")" "/usr/$zk_windows_triplet/lib")
export WINEPATH
export WINEPREFIX=$zk_windows_cache/wine
# Neither Gecko nor Mono is asked for, which a window would have to answer.
export WINEDLLOVERRIDES='mscoree,mshtml='
export WINEDEBUG=${WINEDEBUG:--all}
mkdir -p "$WINEPREFIX"
exec /usr/lib/wine/wine64 "$@"
