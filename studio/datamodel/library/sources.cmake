# The media library's part of the data model library.
set(ZK_LIBRARY_DIR ${CMAKE_CURRENT_LIST_DIR})
list(APPEND ZK_DATAMODEL_SOURCES
    ${ZK_LIBRARY_DIR}/BuiltinPresets.cpp ${ZK_LIBRARY_DIR}/BuiltinPresets_p.h
    ${ZK_LIBRARY_DIR}/CatalogueMerge.cpp ${ZK_LIBRARY_DIR}/CatalogueMerge_p.h
    ${ZK_LIBRARY_DIR}/CatalogueRefresh.cpp ${ZK_LIBRARY_DIR}/CatalogueRefresh_p.h
    ${ZK_LIBRARY_DIR}/DownloadQueue.cpp ${ZK_LIBRARY_DIR}/DownloadQueue_p.h
    ${ZK_LIBRARY_DIR}/FileDownload.cpp ${ZK_LIBRARY_DIR}/FileDownload_p.h
    ${ZK_LIBRARY_DIR}/LibraryCore.cpp ${ZK_LIBRARY_DIR}/LibraryCore_p.h
    ${ZK_LIBRARY_DIR}/LibraryNodes.cpp ${ZK_LIBRARY_DIR}/LibraryNodes_p.h
    ${ZK_LIBRARY_DIR}/LibraryNotices_p.h
    ${ZK_LIBRARY_DIR}/LibraryTree.cpp ${ZK_LIBRARY_DIR}/LibraryTree_p.h
    ${ZK_LIBRARY_DIR}/MediaItemManager.cpp ${ZK_LIBRARY_DIR}/MediaItemManager_p.h
    ${ZK_LIBRARY_DIR}/ZkAnalytics.cpp ${ZK_LIBRARY_DIR}/ZkAnalytics.h
    ${ZK_LIBRARY_DIR}/ZkCatalogue.cpp ${ZK_LIBRARY_DIR}/ZkCatalogue.h
    ${ZK_LIBRARY_DIR}/ZkLibrarySettings.h
    ${ZK_LIBRARY_DIR}/ZkResourceServerFiles.cpp ${ZK_LIBRARY_DIR}/ZkResourceServerFiles.h
    ${ZK_LIBRARY_DIR}/ZkStudioMediaLibrary.cpp ${ZK_LIBRARY_DIR}/ZkStudioMediaLibrary.h
    ${ZK_LIBRARY_DIR}/ZkStudioProjectManager.cpp ${ZK_LIBRARY_DIR}/ZkStudioProjectManager.h)
list(APPEND ZK_DATAMODEL_DEPS Qt5::Network Zk::Storage Zk::Effects)
