# Brings the translation files (.ts) up to date with the sources:
#   cmake -P cmake/UpdateTranslations.cmake
# or only checks that they are, in copies that it makes in DIR:
#   cmake -DCHECK_IN=DIR -P cmake/UpdateTranslations.cmake
# It needs lupdate (Debian: qttools5-dev-tools); LUPDATE names another one.
cmake_minimum_required(VERSION 3.25)
get_filename_component(root ${CMAKE_CURRENT_LIST_DIR} DIRECTORY)
if(NOT LUPDATE)
    find_program(LUPDATE NAMES lupdate-qt5 lupdate HINTS /usr/lib/qt5/bin REQUIRED)
endif()

# Texts that are not translated yet, and in a check those that are translated in vain.
function(report file)
    file(STRINGS ${file} open REGEX "type=\"(unfinished|vanished|obsolete)\"")
    list(LENGTH open count)
    get_filename_component(name ${file} NAME)
    message(STATUS "${name}: ${count} texts are not finished")
    if(CHECK_IN AND count)
        message(SEND_ERROR "${name} is behind the sources: run scripts/update-translations.sh and translate")
    endif()
endfunction()

# update(FILE LANGUAGE FOLDERS... [OPTIONS...]): no line numbers, so that moving code changes nothing.
function(update file language)
    if(CHECK_IN)
        file(COPY ${root}/${file} DESTINATION ${CHECK_IN})
        get_filename_component(name ${file} NAME)
        set(target ${CHECK_IN}/${name})
    else()
        set(target ${root}/${file})
        set(mode -no-obsolete)
    endif()
    execute_process(
        COMMAND ${LUPDATE} -silent -locations none -source-language en -target-language ${language}
            ${mode} ${ARGN} -ts ${target}
        WORKING_DIRECTORY ${root}
        ERROR_VARIABLE complaints
        COMMAND_ERROR_IS_FATAL ANY)
    # Such as tr() in a class without Q_OBJECT, which would be looked up under another name.
    if(complaints)
        message(SEND_ERROR "${complaints}")
    endif()
    report(${target})
endfunction()

foreach(language de zh_CN)
    update(resources/translations/ZkSmartKeying_${language}.ts ${language} ZkSmartKeying)
    update(studio/translations/zkstudio_${language}.ts ${language} studio host)
endforeach()
# The sources are English; only what is counted needs a singular.
update(studio/translations/zkstudio_en.ts en studio host -pluralonly)
