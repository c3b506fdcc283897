#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace zv {

/// A folder of its own that is deleted at the end of its life.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::random_device random;
        do
            m_path = std::filesystem::temp_directory_path() / ("zelvora-test-" + std::to_string(random()));
        while (!std::filesystem::create_directory(m_path));
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    std::string path() const { return textOf(m_path); }
    std::string file(const std::string& name) const
    {
        return textOf((m_path / pathOf(name)).make_preferred());
    }

    std::string write(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(m_path / pathOf(name), std::ios::binary) << bytes;
        return file(name);
    }
    std::string read(const std::string& name) const
    {
        std::ifstream in(m_path / pathOf(name), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }

private:
    // The standard library would not take the program's own text for UTF-8 on Windows.
    static std::filesystem::path pathOf(const std::string& name)
    {
        return std::u8string(name.begin(), name.end());
    }
    static std::string textOf(const std::filesystem::path& path)
    {
        const std::u8string text = path.u8string();
        return std::string(text.begin(), text.end());
    }

    std::filesystem::path m_path;
};

} // namespace zv
