# Wrappers that give every target of this project the same warnings, defines and visibility.

include(GNUInstallDirs)

add_library(ZkBuildSettings INTERFACE)
target_compile_features(ZkBuildSettings INTERFACE cxx_std_17)
target_compile_definitions(ZkBuildSettings INTERFACE
    QT_NO_FOREACH
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_STRICT_ITERATORS
    QT_NO_CAST_TO_ASCII
    QT_RESTRICTED_CAST_FROM_ASCII
    QT_NO_URL_CAST_FROM_STRING
    QT_DISABLE_DEPRECATED_BEFORE=0x050F00)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(ZkBuildSettings INTERFACE
        -Wall -Wextra -Woverloaded-virtual -Wundef -Wsuggest-override
        -Werror -Wno-error=deprecated-declarations
        $<$<CXX_COMPILER_ID:Clang>:-Wextra-semi>)
    if(NOT ZK_SANITIZE AND NOT APPLE)
        target_link_options(ZkBuildSettings INTERFACE -Wl,--no-undefined)
    endif()
endif()
if(MSVC)
    # What the other compilers do anyway.
    target_compile_options(ZkBuildSettings INTERFACE /utf-8 /permissive- /Zc:__cplusplus)
endif()
if(ZK_SANITIZE)
    target_compile_options(ZkBuildSettings INTERFACE
        -fsanitize=${ZK_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(ZkBuildSettings INTERFACE -fsanitize=${ZK_SANITIZE})
endif()
# OpenCV's worker threads are not instrumented: with one processor it starts none. The project's own threads
# take turns there, which the sanitizer needs no more than that to see what is not ordered.
set(_zk_sanitizers ${PROJECT_SOURCE_DIR}/tests/support/sanitizers)
if(ZK_SANITIZE MATCHES "thread")
    set(ZK_SANITIZER_ENVIRONMENT
        "TSAN_OPTIONS=suppressions=${_zk_sanitizers}/tsan.supp")
    set(ZK_TEST_LAUNCHER taskset --cpu-list 0)
    set(ZK_TEST_TIME_SCALE 20)
elseif(ZK_SANITIZE MATCHES "address")
    set(ZK_SANITIZER_ENVIRONMENT
        "LSAN_OPTIONS=suppressions=${_zk_sanitizers}/lsan.supp:print_suppressions=0")
endif()
if(ZK_COVERAGE)
    target_compile_options(ZkBuildSettings INTERFACE --coverage)
    target_link_options(ZkBuildSettings INTERFACE --coverage)
endif()

function(_zk_common target)
    set_target_properties(${target} PROPERTIES
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        POSITION_INDEPENDENT_CODE ON
        AUTOMOC ON)
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:ZkBuildSettings>)
endfunction()

# zk_add_library(NAME SOURCES ... [PUBLIC_DEPS ...] [DEPS ...] [PCH ...])
# A shared library ZkNAME with the alias Zk::NAME. While it is built, ZK_BUILD_NAME (upper case) is
# defined, so that its export macro says "export"; everywhere else the macro says "import". Its own
# folder is on its users' include path.
function(zk_add_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC_DEPS;DEPS;PCH" ${ARGN})
    set(target Zk${name})
    string(TOUPPER ${name} upper)
    add_library(${target} SHARED ${ARG_SOURCES})
    add_library(Zk::${name} ALIAS ${target})
    _zk_common(${target})
    target_compile_definitions(${target} PRIVATE ZK_BUILD_${upper})
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>)
    target_link_libraries(${target} PUBLIC ${ARG_PUBLIC_DEPS} PRIVATE ${ARG_DEPS})
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
    if(WIN32)
        set_target_properties(${target} PROPERTIES PREFIX "") # also with MinGW: ZkNAME.dll
    endif()
    if(ARG_PCH)
        target_precompile_headers(${target} PRIVATE ${ARG_PCH})
    endif()
endfunction()

# zk_add_executable(NAME SOURCES ... DEPS ...)
function(zk_add_executable name)
    cmake_parse_arguments(ARG "" "" "SOURCES;DEPS;PCH" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    _zk_common(${name})
    target_link_libraries(${name} PRIVATE ${ARG_DEPS})
    if(ARG_PCH)
        target_precompile_headers(${name} PRIVATE ${ARG_PCH})
    endif()
endfunction()

# zk_add_test(NAME SOURCES ... DEPS ... [TIMEOUT seconds] [LABELS ...])
# A QTest program (its main comes from ZkTestMain.h) that CTest runs offscreen with a fixed hash seed. A
# warning or critical message that the test does not expect fails it.
function(zk_add_test name)
    cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;DEPS;LABELS" ${ARGN})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 120)
    endif()
    zk_add_executable(${name} SOURCES ${ARG_SOURCES} DEPS ${ARG_DEPS} Zk::TestSupport Qt5::Test)
    if(ZK_TEST_TIME_SCALE)
        math(EXPR ARG_TIMEOUT "${ARG_TIMEOUT} * ${ZK_TEST_TIME_SCALE}")
    endif()
    add_test(NAME ${name}
        COMMAND ${ZK_TEST_LAUNCHER} ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:${name}>)
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${ARG_TIMEOUT}
        LABELS "${ARG_LABELS}"
        FAIL_REGULAR_EXPRESSION "QWARN  :;QCRITICAL:"
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_HASH_SEED=0;LC_ALL=C.UTF-8;${ZK_SANITIZER_ENVIRONMENT}")
endfunction()
