# What other projects build against: the module, the host headers and, so that the package is usable
# on its own, the host libraries that this build implements.

include(CMakePackageConfigHelpers)

set(_zk_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ZkSmartKeying)
set(_zk_include_dir ${CMAKE_INSTALL_INCLUDEDIR}/ZkSmartKeying)

set(_zk_targets ZkHost ZkSmartKeying)
foreach(library Core Utility Account Widgets Language Engine Models Media Effects Storage DataModel Erasing MediaPlayer TimelineView FakeDataModel FakeMediaPlayer)
    if(TARGET Zk${library} AND (ZK_STUDIO OR NOT library MATCHES "^(Engine|Media|Effects|Storage)$"))
        if(NOT (ZK_STUDIO AND library MATCHES "^Fake"))
            list(APPEND _zk_targets Zk${library})
        endif()
    endif()
endforeach()

foreach(target IN LISTS _zk_targets)
    get_target_property(_type ${target} TYPE)
    if(_type STREQUAL "SHARED_LIBRARY")
        set_target_properties(${target} PROPERTIES
            INSTALL_RPATH "$ORIGIN"
            VERSION ${PROJECT_VERSION}
            SOVERSION ${PROJECT_VERSION_MAJOR})
    endif()
endforeach()

install(TARGETS ${_zk_targets} EXPORT ZkSmartKeyingTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    INCLUDES DESTINATION
        ${_zk_include_dir}/erasing ${_zk_include_dir}/presenters ${_zk_include_dir}/presets
        ${_zk_include_dir}/workspace)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/host/ DESTINATION ${_zk_include_dir}/host
    FILES_MATCHING PATTERN "*.h")
install(DIRECTORY ${PROJECT_SOURCE_DIR}/ZkSmartKeying/ DESTINATION ${_zk_include_dir}
    FILES_MATCHING PATTERN "Z*Presenter.h" PATTERN "ZCutoutPresetItem*.h"
    PATTERN "ZkAIErasingView.h" PATTERN "ZkSmartKeyingPlayerView.h"
    PATTERN "ZkSmartKeyingGlobal.h")

install(EXPORT ZkSmartKeyingTargets NAMESPACE Zk:: DESTINATION ${_zk_package_dir})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/ZkSmartKeyingConfig.cmake.in
    ${PROJECT_BINARY_DIR}/ZkSmartKeyingConfig.cmake INSTALL_DESTINATION ${_zk_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZkSmartKeyingConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/ZkSmartKeyingConfig.cmake
    ${PROJECT_BINARY_DIR}/ZkSmartKeyingConfigVersion.cmake
    DESTINATION ${_zk_package_dir})
if(TARGET zkstudio)
    set_target_properties(zkstudio PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
    install(TARGETS zkstudio RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

# The library has both within; these are for a host that brings its own instead.
get_target_property(_zk_translations ZkSmartKeying ZK_TRANSLATIONS)
install(FILES ${_zk_translations} DESTINATION ${CMAKE_INSTALL_DATADIR}/ZkSmartKeying/translations)
install(FILES ${PROJECT_SOURCE_DIR}/resources/ZkSmartKeying.qrc
    DESTINATION ${CMAKE_INSTALL_DATADIR}/ZkSmartKeying/resources)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources/Resource
    DESTINATION ${CMAKE_INSTALL_DATADIR}/ZkSmartKeying/resources)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/docs/windows.md
    DESTINATION ${CMAKE_INSTALL_DATADIR}/ZkSmartKeying)

# cpack makes one archive of what has been installed.
set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_VENDOR ZkSmartKeying)
string(TOLOWER "${PROJECT_NAME}-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}" CPACK_PACKAGE_FILE_NAME)
set(CPACK_STRIP_FILES ON)
include(CPack)
