# zk_add_translations(TARGET FILE.ts ...)
# Compiles the translations and embeds them in the target as :/ZkTranslations/FILE.qm; its property
# ZK_TRANSLATIONS lists them.
function(zk_add_translations target)
    qt5_add_translation(compiled ${ARGN})
    set_target_properties(${target} PROPERTIES ZK_TRANSLATIONS "${compiled}")
    set(entries "")
    foreach(file IN LISTS compiled)
        get_filename_component(name ${file} NAME)
        string(APPEND entries "        <file alias=\"${name}\">${file}</file>\n")
    endforeach()
    set(list ${CMAKE_CURRENT_BINARY_DIR}/${target}Translations.qrc)
    file(CONFIGURE OUTPUT ${list} @ONLY CONTENT
"<RCC>
    <qresource prefix=\"/ZkTranslations\">
@entries@    </qresource>
</RCC>
")
    qt5_add_resources(embedded ${list})
    set_source_files_properties(${embedded} PROPERTIES SKIP_AUTOGEN ON)
    target_sources(${target} PRIVATE ${embedded})
endfunction()
