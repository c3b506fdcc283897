# What every target of the house shares: the language, the warnings, the sanitizers, the compiler cache.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(ZELVORA_CCACHE ccache)
if(ZELVORA_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env "CCACHE_SLOPPINESS=pch_defines,time_macros" ${ZELVORA_CCACHE})
endif()

# The many test programs are linked several times faster by LLVM's linker.
find_program(ZELVORA_LLD ld.lld)
if(ZELVORA_LLD AND NOT WIN32)
    add_link_options(-fuse-ld=lld)
endif()

add_library(project_warnings INTERFACE)
target_compile_options(project_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
# A precompiled header of g++ is only found again by the compiler cache with this switch.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(project_warnings INTERFACE -fpch-preprocess)
    # g++ 12 suspects the optimised string operations of its own library.
    target_compile_options(project_warnings INTERFACE -Wno-restrict $<$<NOT:$<CONFIG:Debug>>:-Wno-stringop-overflow>)
endif()

if(ZELVORA_LINT)
    find_program(ZELVORA_CLANG_TIDY clang-tidy REQUIRED)
endif()

if(ZELVORA_SANITIZE)
    add_compile_options(-fsanitize=${ZELVORA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${ZELVORA_SANITIZE})
    # What the sanitizers add makes g++ 12 lose sight of what is set, here and in its own library.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(project_warnings INTERFACE -Wno-maybe-uninitialized)
    endif()
endif()
if(ZELVORA_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# A library of plain code: the C++20 standard library and src/platform, never Qt.
function(zelvora_plain_library name)
    add_library(${name} STATIC ${ARGN})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PRIVATE project_warnings)
    if(ZELVORA_LINT)
        target_compile_options(${name} PRIVATE -Wconversion)
        # What g++ warns of by these names is g++'s to tell.
        set_target_properties(${name} PROPERTIES CXX_CLANG_TIDY
            "${ZELVORA_CLANG_TIDY};--warnings-as-errors=*;--quiet;--extra-arg=-Wno-unknown-warning-option;--extra-arg=-Wno-conversion")
    endif()
endfunction()

# zelvora_precompiled(target): the widgets' headers, compiled once for all targets that have the same definitions of
# their own. The first target that asks makes them; one for each target would take 360 MB apiece.
function(zelvora_precompiled name)
    get_target_property(definitions ${name} COMPILE_DEFINITIONS)
    list(SORT definitions)
    string(MAKE_C_IDENTIFIER "zelvora_precompiled_${definitions}" shared)
    if(NOT TARGET ${shared})
        file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/precompiled/${shared}.cpp CONTENT "// Only its precompiled header is used.\n")
        add_library(${shared} OBJECT ${CMAKE_BINARY_DIR}/precompiled/${shared}.cpp)
        target_compile_definitions(${shared} PRIVATE ${definitions})
        target_link_libraries(${shared} PRIVATE Qt6::Widgets project_warnings)
        target_precompile_headers(${shared} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/WindowsPrecompiled.h)
    endif()
    target_precompile_headers(${name} REUSE_FROM ${shared})
endfunction()

# A library of windows or widgets; it may use Qt.
function(zelvora_window_library name)
    add_library(${name} STATIC ${ARGN})
    set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC Qt6::Widgets PRIVATE project_warnings)
    target_compile_definitions(${name} PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS)
    zelvora_precompiled(${name})
endfunction()
