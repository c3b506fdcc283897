# How Qt is configured for Windows: a first cache for CMake (-C). What stands here is part of the key under which the
# result is kept, so a change builds Qt anew.
function(option name value)
    set(${name} ${value} CACHE STRING "")
endfunction()

option(CMAKE_BUILD_TYPE Release)
option(BUILD_SHARED_LIBS ON)
option(QT_HOST_PATH /usr)
option(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake)
option(QT_QMAKE_TARGET_MKSPEC win32-g++)
option(QT_BUILD_EXAMPLES OFF)
option(QT_BUILD_TESTS OFF)
option(QT_BUILD_BENCHMARKS OFF)
option(QT_BUILD_DOCS OFF)
option(INPUT_opengl no)

# Nothing of the machine that builds: Qt brings its own zlib, png, pcre2, freetype and harfbuzz.
option(QT_FEATURE_pkg_config OFF)
foreach(library doubleconversion freetype harfbuzz jpeg libb2 md4c pcre2 png proxies sqlite textmarkdownreader xcb_xinput zlib)
    option(QT_FEATURE_system_${library} OFF)
endforeach()

foreach(feature
        # Modules that the program does not use.
        concurrent dbus opengl opengles2 opengl_dynamic vulkan sql xml
        # What it does not read; names and numbers are the system's.
        brotli glib icu zstd
        islamiccivilcalendar jalalicalendar hijricalendar
        # The network is there for local pipes and for tests from outside.
        dtls gssapi http networkdiskcache ocsp openssl schannel sspi ssl topleveldomain
        # Not in the distribution's source: wintab.h. Not with this compiler: Direct2D as a platform; fonts go through it.
        direct2d1_1 tabletevent
        # Widgets and documents that no window shows.
        columnview dial fontcombobox lcdnumber mdiarea printpreviewdialog printpreviewwidget
        textmarkdownreader textmarkdownwriter textodfwriter undocommand undogroup undostack undoview wizard)
    option(QT_FEATURE_${feature} OFF)
endforeach()
