# cmake -DBUILD_DIR=... -DSOURCE_DIR=... -DWORK_DIR=... -DGENERATOR=... [-DTOOLCHAIN=... -DEMULATOR=...] -P run.cmake
# Installs the build into an empty folder, builds the consumer against it and runs it.
function(step)
    execute_process(COMMAND ${ARGV} RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        list(JOIN ARGV " " line)
        message(FATAL_ERROR "failed (${result}): ${line}")
    endif()
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
step(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix)
step(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/build -G ${GENERATOR}
    -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}"
    "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}" "-DCMAKE_RUNTIME_OUTPUT_DIRECTORY=${WORK_DIR}/prefix/bin")
step(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
set(ENV{QT_QPA_PLATFORM} offscreen)
file(GLOB consumer ${WORK_DIR}/prefix/bin/consumer*)
step(${EMULATOR} ${consumer})
