# Other programs, driven by name.
zelvora_plain_library(zv_automation Automation.cpp Automation.h Json.cpp Json.h)
target_link_libraries(zv_automation PUBLIC zv_platform)
if(NOT WIN32)
    target_sources(zv_automation PRIVATE
        LocalHosts.h posix/LocalHosts.cpp posix/SocketAutomation.cpp posix/StartFile.cpp posix/StartFile.h)
endif()
