#include "faults/Operations.h"

#include "platform/Profile.h"

#include <sys/stat.h>
#include <unistd.h>

namespace zv {

namespace {

constexpr const char* kProfile = "Zelvora.ini";
constexpr uid_t kNobody = 65534;

/// Takes away the right to make files in a folder, the administrator's too, for as long as it lives.
class NoNewFiles {
public:
    explicit NoNewFiles(const TemporaryFolder& folder) : m_folder(folder.path()), m_user(::geteuid())
    {
        ::chmod(m_folder.c_str(), 0555);
        if (m_user == 0)
            static_cast<void>(::seteuid(kNobody) == 0);
    }
    NoNewFiles(const NoNewFiles&) = delete;
    NoNewFiles& operator=(const NoNewFiles&) = delete;
    ~NoNewFiles()
    {
        static_cast<void>(::seteuid(m_user) == 0);
        ::chmod(m_folder.c_str(), 0755);
    }

private:
    std::string m_folder;
    uid_t m_user;
};

FileOperation inPlace(const std::string& name, const std::string& before, const std::string& value)
{
    return {name,
            [=](const TemporaryFolder& folder) { ::chmod(folder.write(kProfile, before).c_str(), 0666); },
            [=](const TemporaryFolder& folder) {
                const NoNewFiles here(folder);
                return writeProfileString(folder.file(kProfile), "a", "k", value);
            },
            [](const TemporaryFolder& folder) {
                // Line ends behind the last line say nothing.
                std::string text = folder.read(kProfile);
                return text.substr(0, text.find_last_not_of("\r\n") + 1);
            }};
}

} // namespace

std::vector<FileOperation> systemFileOperations()
{
    return {inPlace("shorter key changed in place", "[a]\r\nk=" + std::string(50, 'x') + "\r\nm=1\r\n", "2"),
            inPlace("longer key changed in place", "[a]\r\nk=2\r\nm=1\r\n", std::string(50, 'x'))};
}

} // namespace zv
