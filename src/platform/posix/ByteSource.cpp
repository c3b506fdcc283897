#include "platform/ByteSource.h"

#include "platform/posix/Descriptor.h"

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace zv {

namespace {

// Mapping the file would turn one that shrinks into a signal, so it is read.
class FileSource final : public ByteSource {
public:
    FileSource(Descriptor file, std::uint64_t size, std::string path)
        : m_file(std::move(file)), m_size(size), m_path(std::move(path))
    {
    }

    std::uint64_t size() const override { return m_size; }

    void refreshSize() override
    {
        struct stat status {};
        if (::fstat(m_file.number(), &status) == 0)
            m_size = static_cast<std::uint64_t>(status.st_size);
    }

    Result<void> read(std::uint64_t offset, std::span<std::byte> into) const override
    {
        if (offset > m_size || into.size() > m_size - offset)
            return Error{ErrorCode::Damaged, m_path + ": the file ends too early"};
        while (!into.empty()) {
            const ssize_t count =
                ::pread(m_file.number(), into.data(), into.size(), static_cast<off_t>(offset));
            if (count < 0 && errno != EINTR)
                return Error{ErrorCode::Failed, systemError(m_path).text};
            if (count == 0)
                return Error{ErrorCode::Damaged, m_path + ": the file was cut while it was read"};
            if (count > 0) {
                into = into.subspan(static_cast<std::size_t>(count));
                offset += static_cast<std::uint64_t>(count);
            }
        }
        return {};
    }

private:
    Descriptor m_file;
    std::uint64_t m_size;
    std::string m_path;
};

} // namespace

Result<std::unique_ptr<ByteSource>> openByteSource(const std::string& path)
{
    Result<Descriptor> file = openForReading(path);
    if (!file)
        return file.error();
    struct stat status {};
    if (::fstat(file->number(), &status) != 0)
        return systemError(path);
    return std::unique_ptr<ByteSource>(std::make_unique<FileSource>(
        std::move(file.value()), static_cast<std::uint64_t>(status.st_size), path));
}

} // namespace zv
