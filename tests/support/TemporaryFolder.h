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

    std::string path() const { return m_path.string(); }
    std::string file(const std::string& name) const { return (m_path / name).string(); }

    std::string write(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(m_path / name, std::ios::binary) << bytes;
        return file(name);
    }
    std::string read(const std::string& name) const
    {
        std::ifstream in(m_path / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }

private:
    std::filesystem::path m_path;
};

} // namespace zv
