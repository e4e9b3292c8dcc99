# Sourced by the scripts of this folder.

zk_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)

# Everything that takes long to make, outside of the sources.
zk_windows_cache=${ZK_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/zk-windows}
zk_windows_triplet=x86_64-w64-mingw32
# The one toolchain of Debian's that has std::thread and std::mutex.
zk_windows_compiler=$zk_windows_triplet-g++-posix
zk_windows_qt=$zk_windows_cache/qt
