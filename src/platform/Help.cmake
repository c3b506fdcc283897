# The system's viewer of compiled help files; other systems have one of the program's own in src/help.
if(WIN32)
    zelvora_plain_library(zv_htmlhelp windows/HtmlHelp.cpp)
    target_link_libraries(zv_htmlhelp PUBLIC zv_platform)
endif()
