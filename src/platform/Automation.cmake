# Other programs, driven by name.
zelvora_plain_library(zv_automation
    Automation.cpp Automation.h CarrierPatience.h HostEvents.h Json.cpp Json.h Wire.cpp Wire.h)
target_link_libraries(zv_automation PUBLIC zv_platform)
if(WIN32)
    target_sources(zv_automation PRIVATE
        windows/ComAutomation.cpp windows/ComAutomation.h windows/ComClasses.cpp windows/ComClasses.h
        windows/ComCounted.h windows/ComMembers.h windows/ComPointer.h windows/ComServer.cpp windows/ComServer.h
        windows/ComThread.cpp windows/ComThread.h windows/ComValue.cpp windows/ComValue.h windows/HostEvents.cpp)
    target_link_libraries(zv_automation PUBLIC ole32 oleaut32 uuid)
else()
    target_sources(zv_automation PRIVATE
        LocalHosts.h posix/LocalHosts.cpp posix/SocketAutomation.cpp posix/StartFile.cpp posix/StartFile.h)
endif()

# Other programs' windows.
if(WIN32)
    zelvora_plain_library(zv_desktop Desktop.h windows/Desktop.cpp)
else()
    zelvora_plain_library(zv_desktop Desktop.h posix/Desktop.cpp)
    target_link_libraries(zv_desktop PRIVATE xcb)
endif()
target_link_libraries(zv_desktop PUBLIC zv_platform)
