#include "platform/ByteSource.h"

#include "platform/windows/FileHandle.h"

#include <algorithm>

namespace zv {

namespace {

constexpr std::size_t kChunk = 1u << 30;

class FileSource final : public ByteSource {
public:
    explicit FileSource(const std::string& path)
        : m_file(path, GENERIC_READ, kShareAll, OPEN_EXISTING), m_path(path)
    {
    }

    /// Asks for the size. False when the file is not open or no regular one.
    bool ready()
    {
        LARGE_INTEGER size{};
        if (!m_file || ::GetFileType(m_file.get()) != FILE_TYPE_DISK || !::GetFileSizeEx(m_file.get(), &size))
            return false;
        m_size = static_cast<std::uint64_t>(size.QuadPart);
        return true;
    }

    std::uint64_t size() const override { return m_size; }

    void refreshSize() override { static_cast<void>(ready()); }

    Result<void> read(std::uint64_t offset, std::span<std::byte> into) const override
    {
        if (offset > m_size || into.size() > m_size - offset)
            return Error{ErrorCode::Damaged, m_path + ": the file ends too early"};
        while (!into.empty()) {
            OVERLAPPED place{};
            place.Offset = static_cast<DWORD>(offset);
            place.OffsetHigh = static_cast<DWORD>(offset >> 32);
            DWORD count = 0;
            const auto wanted = static_cast<DWORD>(std::min(into.size(), kChunk));
            if (!::ReadFile(m_file.get(), into.data(), wanted, &count, &place) &&
                ::GetLastError() != ERROR_HANDLE_EOF)
                return Error{ErrorCode::Failed, lastError(m_path).text};
            if (count == 0)
                return Error{ErrorCode::Damaged, m_path + ": the file was cut while it was read"};
            into = into.subspan(count);
            offset += count;
        }
        return {};
    }

private:
    FileHandle m_file;
    std::string m_path;
    std::uint64_t m_size = 0;
};

} // namespace

Result<std::unique_ptr<ByteSource>> openByteSource(const std::string& path)
{
    auto source = std::make_unique<FileSource>(path);
    if (!source->ready())
        return lastError(path);
    return std::unique_ptr<ByteSource>(std::move(source));
}

} // namespace zv
