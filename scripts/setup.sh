# Sourced by ./run, ./test and tools/windows: installs the Debian packages that are missing.

zk_packages="cmake ninja-build g++ pkg-config
qtbase5-dev qttools5-dev qttools5-dev-tools libqt5sql5-sqlite qttranslations5-l10n
libopencv-dev
libavformat-dev libavcodec-dev libavutil-dev libswscale-dev libswresample-dev
fonts-dejavu-core"

# Of the tests that work on a screen of their own.
zk_screen_packages="xvfb openbox picom xdotool x11-utils python3"

# To check the sources for Windows; to build Qt for it; to run there what was built.
zk_windows_packages="g++-mingw-w64-x86-64-posix"
zk_windows_qt_packages="dpkg-dev perl make g++"
zk_windows_run_packages="wine wine64 xvfb xauth fonts-dejavu-core"

# zk_install_missing PACKAGE...: says what it installs; silent when nothing is missing.
zk_install_missing() {
    command -v dpkg-query >/dev/null || {
        echo "This script sets up Debian 12. On another system install: $*" >&2
        return 0
    }
    missing=""
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q '^install ok installed$' \
            || missing="$missing $package"
    done
    [ -z "$missing" ] && return 0
    as_root=""
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "Please install these packages as root, then start again:$missing" >&2
            return 1
        }
        as_root="sudo"
    fi
    echo "Installing the missing packages:$missing"
    $as_root apt-get update -q
    $as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -q --no-install-recommends $missing
}

# zk_build PRESET [TARGET...]: configures and builds.
zk_build() {
    preset=$1
    shift
    cmake --preset "$preset" "$@"
    cmake --build --preset "$preset"
}
