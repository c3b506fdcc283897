#include "config/WindowGeometry.h"

#include "platform/System.h"
#include "platform/Text.h"

namespace zv {

namespace {

constexpr const char* kApplication = "Zelvora";
constexpr const char* kSection = "Settings";

struct Field {
    const char* key;
    double WindowGeometry::*value;
};

constexpr Field kFields[] = {{"MainLeft", &WindowGeometry::left},
                             {"MainTop", &WindowGeometry::top},
                             {"MainWidth", &WindowGeometry::width},
                             {"MainHeight", &WindowGeometry::height}};

} // namespace

WindowGeometry readWindowGeometry()
{
    WindowGeometry geometry;
    for (const Field& field : kFields)
        textNumber(settingsValue(kApplication, kSection, field.key, ""), geometry.*field.value);
    return geometry;
}

void saveWindowGeometry(const WindowGeometry& geometry)
{
    for (const Field& field : kFields)
        setSettingsValue(kApplication, kSection, field.key, numberText(geometry.*field.value));
}

} // namespace zv
