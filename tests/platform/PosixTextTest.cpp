#include "platform/Text.h"

#include "platform/RunProgram.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

namespace zv {
namespace {

/// Runs in a locale whose characters may end in the byte of a backslash, as long as this lives.
class DoubleByteLocale {
public:
    DoubleByteLocale()
    {
        const std::string folder = m_folder.file("zh_TW.BIG5");
        const auto made =
            runProgram({"/bin/sh", "-c", "localedef -i zh_TW -f BIG5 '" + folder + "' >/dev/null 2>&1"});
        ::setenv("LOCPATH", m_folder.path().c_str(), 1);
        m_set = made && std::setlocale(LC_ALL, "zh_TW.BIG5") != nullptr;
    }
    DoubleByteLocale(const DoubleByteLocale&) = delete;
    DoubleByteLocale& operator=(const DoubleByteLocale&) = delete;
    ~DoubleByteLocale()
    {
        std::setlocale(LC_ALL, "C");
        ::unsetenv("LOCPATH");
    }
    bool isSet() const { return m_set; }

private:
    TemporaryFolder m_folder;
    bool m_set = false;
};

TEST(PosixText, AFileNameMayHoldACharacterThatEndsInTheByteOfABackslash)
{
    const DoubleByteLocale locale;
    if (!locale.isSet())
        GTEST_SKIP() << "localedef cannot make the locale zh_TW.BIG5 here";
    const std::string name = "\xA5\x5C.dwg";
    EXPECT_EQ(fileNamePart("C:\\details\\" + name), name);
    EXPECT_EQ(fileNamePart(name), name);
    EXPECT_EQ(fileNamePart("C:\\\xA5\x5C\\a.dwg"), "a.dwg");
    EXPECT_EQ(drawingName("C:\\" + name), "\xA5\x5C");
}

} // namespace
} // namespace zv
