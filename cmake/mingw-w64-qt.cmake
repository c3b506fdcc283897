# As mingw-w64.cmake, with Qt for Windows where packaging/windows/build-qt has left it. Its libraries are shared, so the
# programs need them and the compiler's own beside them.
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/../packaging/windows/build-qt --where
    OUTPUT_VARIABLE ZELVORA_QT_WINDOWS OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT EXISTS ${ZELVORA_QT_WINDOWS})
    message(FATAL_ERROR "Qt for Windows is not there yet; packaging/windows/build-qt builds it, once.")
endif()
set(CMAKE_EXE_LINKER_FLAGS_INIT "-s")
if(CMAKE_CROSSCOMPILING_EMULATOR)
    # Tests find Qt where it was built, and Qt its plugins beside it.
    list(PREPEND CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_COMMAND} -E env WINEPATH=Z:${ZELVORA_QT_WINDOWS}/bin)
endif()
list(PREPEND CMAKE_FIND_ROOT_PATH ${ZELVORA_QT_WINDOWS})
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# The tools of Qt's build are the machine's own.
set(QT_HOST_PATH /usr CACHE PATH "")
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake CACHE PATH "")
