#include "window/DwgPropsX.h"

#include "drawing/properties/PropertiesReader.h"
#include "platform/Text.h"
#include "platform/WithinMemory.h"

namespace zv {

Result<void> DwgPropsX::load(const std::string& path)
{
    const auto source = openByteSource(path);
    if (!source)
        return source.error();
    auto properties = withinMemory([&source] { return dwg::readProperties(**source); });
    if (!properties)
        return properties.error();
    m_properties = std::move(*properties).value_or(dwg::Properties{});
    return {};
}

std::string DwgPropsX::comments() const
{
    return narrow(m_properties.comments);
}

std::string DwgPropsX::keywords() const
{
    return narrow(m_properties.keywords);
}

std::string DwgPropsX::customProperty(std::size_t index) const
{
    if (index >= m_properties.custom.size())
        return {};
    const auto& [name, value] = m_properties.custom[index];
    return narrow(name + u"=" + value);
}

} // namespace zv
