#!/usr/bin/env bash
# Builds Qt 5.15 (Core, Gui, Widgets, Test) for Windows from Debian's source package, unpatched, into
# $ZK_WINDOWS_CACHE/qt (default: ~/.cache/zk-windows/qt). Takes over half an hour on two processors; does
# nothing when it is there, goes on where it was stopped. Needs no rights when the packages are installed.
set -eu
. "$(dirname "$0")/settings.sh"
. "$zk_root/scripts/setup.sh"

[ -e "$zk_windows_qt/complete" ] && exit 0
zk_install_missing $zk_windows_packages $zk_windows_qt_packages

work=$zk_windows_cache/qt-work
mkdir -p "$work/apt/lists/partial" "$work/apt/cache/archives/partial"

# Most machines fetch no source packages: apt gets sources and lists of its own that do, of the same mirror.
private_apt() {
    apt-get -o Dir::Etc::SourceList="$work/apt/sources.list" -o Dir::Etc::SourceParts=/dev/null \
        -o Dir::State::Lists="$work/apt/lists" -o Dir::Cache="$work/apt/cache" "$@"
}

fetch_sources() {
    apt-get indextargets --format 'deb-src $(REPO_URI) $(RELEASE) $(COMPONENT)' \
        'Created-By: Packages' 'Origin: Debian' | sort -u > "$work/apt/sources.list"
    [ -s "$work/apt/sources.list" ] || {
        echo "apt knows of no Debian mirror: run apt-get update first" >&2
        return 1
    }
    private_apt update -q
    (cd "$work" && private_apt source -q --download-only qtbase-opensource-src)
    rm -rf "$work/src"
    dpkg-source --no-check -x "$work"/qtbase-opensource-src_*.dsc "$work/src"
    # Halves the time; the tests are of the module, not of Qt's speed.
    sed -i 's/^\(QMAKE_CFLAGS_OPTIMIZE\(_FULL\)\? *=\) *-O[23]/\1 -O1/' \
        "$work/src/mkspecs/common/gcc-base.conf"
}

configure_qt() {
    rm -rf "$work/build"
    mkdir "$work/build"
    (cd "$work/build" && MAKEFLAGS=-j$(nproc) ../src/configure \
        -prefix "$zk_windows_qt" -opensource -confirm-license \
        -xplatform win32-g++ -device-option CROSS_COMPILE=$zk_windows_triplet- \
        -release -shared -make libs -nomake examples -nomake tests -nomake tools \
        -no-opengl -no-feature-vulkan -no-direct2d -no-dbus -no-icu -no-openssl -no-glib \
        -no-feature-sql -no-feature-network -no-feature-xml -no-feature-concurrent -no-feature-tabletevent \
        -qt-zlib -qt-pcre -qt-doubleconversion -qt-libpng -qt-libjpeg -qt-freetype -qt-harfbuzz \
        -no-avx -no-avx2 -no-avx512)
}

# once STAMP COMMAND: what has been done stays done when the script is started again.
once() {
    [ -e "$work/$1" ] && return 0
    "$2"
    touch "$work/$1"
}

# Qt's build asks for the compilers without naming the thread library that they were built with.
mkdir -p "$work/bin"
ln -sf "$(command -v $zk_windows_triplet-gcc-posix)" "$work/bin/$zk_windows_triplet-gcc"
ln -sf "$(command -v $zk_windows_compiler)" "$work/bin/$zk_windows_triplet-g++"
PATH=$work/bin:$PATH

once fetched fetch_sources
once configured configure_qt
nice make -C "$work/build" -j"$(nproc)"
make -C "$work/build" install
touch "$zk_windows_qt/complete"
rm -rf "$work"
