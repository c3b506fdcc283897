# Other programs, driven by name.
zelvora_plain_library(zv_automation Automation.cpp Automation.h)
target_link_libraries(zv_automation PUBLIC zv_platform)
