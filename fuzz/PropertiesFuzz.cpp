#include "Fuzz.h"

#include "drawing/properties/PropertiesReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static_cast<void>(zv::dwg::readProperties(fuzzedSource(data, size)));
    return 0;
}
