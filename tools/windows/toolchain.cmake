# Builds for Windows x86-64 with Debian's MinGW, against the Qt that build-qt.sh has built, and runs what was
# built under Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

if(DEFINED ENV{ZK_WINDOWS_CACHE})
    set(_zk_cache $ENV{ZK_WINDOWS_CACHE})
elseif(DEFINED ENV{XDG_CACHE_HOME})
    set(_zk_cache $ENV{XDG_CACHE_HOME}/zk-windows)
else()
    set(_zk_cache $ENV{HOME}/.cache/zk-windows)
endif()
list(APPEND CMAKE_PREFIX_PATH ${_zk_cache}/qt)

set(CMAKE_FIND_ROOT_PATH ${_zk_cache}/qt /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# Not only: what has been installed elsewhere for Windows is named by CMAKE_PREFIX_PATH.
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)
# Compiles translations while building, so it is this machine's.
file(GLOB Qt5LinguistTools_DIR /usr/lib/*/cmake/Qt5LinguistTools)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine.sh)
