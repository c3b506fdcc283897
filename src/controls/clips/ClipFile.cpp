#include "controls/clips/ClipFile.h"

#include <algorithm>
#include <optional>

namespace zv {
namespace {

constexpr int kDepthLimit = 4; ///< Lists stand in lists: RIFF, hdrl, strl.
constexpr std::size_t kMainHeaderSize = 56;
constexpr std::size_t kStreamHeaderSize = 56;
constexpr std::size_t kBitmapHeaderSize = 40;
constexpr std::uint32_t kHasIndex = 0x10;
constexpr std::uint32_t kKeyFrame = 0x10;

/// Bytes of one row; rows are filled up to whole groups of four bytes.
std::size_t rowBytes(int width, int bits)
{
    return (static_cast<std::size_t>(width) * static_cast<std::size_t>(bits) / 8 + 3) / 4 * 4;
}

std::uint32_t number32(std::string_view bytes, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at + i])) << (8 * i);
    return value;
}

std::uint32_t number16(std::string_view bytes, std::size_t at)
{
    return static_cast<unsigned char>(bytes[at]) |
           static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at + 1])) << 8;
}

struct Chunk {
    std::string_view name;
    std::string_view body;
};

/// Takes the next chunk off the front of `rest`; nothing when none is whole.
std::optional<Chunk> takeChunk(std::string_view& rest)
{
    if (rest.size() < 8)
        return {};
    const std::size_t size = number32(rest, 4);
    if (size > rest.size() - 8)
        return {};
    const Chunk chunk{rest.substr(0, 4), rest.substr(8, size)};
    rest.remove_prefix(std::min(rest.size(), 8 + size + size % 2));
    return chunk;
}

class ClipReader {
public:
    Result<Clip> read(std::string_view bytes)
    {
        if (bytes.size() > kMaxClipBytes)
            return Error{ErrorCode::TooLarge, "the clip is too large"};
        std::string_view rest = bytes;
        const std::optional<Chunk> riff = takeChunk(rest);
        if (!riff || riff->name != "RIFF" || !riff->body.starts_with("AVI "))
            return Error{ErrorCode::Damaged, "this is no clip"};
        walk(riff->body.substr(4), 0);
        if (m_error)
            return *m_error;
        if (m_clip.frames.empty())
            return Error{ErrorCode::Damaged, "the clip has no frame"};
        return std::move(m_clip);
    }

private:
    void walk(std::string_view rest, int depth)
    {
        while (!m_error) {
            const std::optional<Chunk> chunk = takeChunk(rest);
            if (!chunk)
                return;
            if (chunk->name == "LIST" && chunk->body.size() >= 4 && depth < kDepthLimit)
                walk(chunk->body.substr(4), depth + 1);
            else if (chunk->name == "avih" && chunk->body.size() >= 4)
                m_clip.frameMs = static_cast<int>(std::clamp(number32(chunk->body, 0) / 1000, 10U, 10000U));
            else if (chunk->name == "strf" && m_clip.width == 0)
                readFormat(chunk->body);
            else if (chunk->name == "00db" || chunk->name == "00dc")
                readFrame(chunk->body);
        }
    }

    void readFormat(std::string_view body)
    {
        if (body.size() < kBitmapHeaderSize)
            return fail(ErrorCode::Damaged, "the clip's format record is cut short");
        const auto width = static_cast<std::int32_t>(number32(body, 4));
        const auto height = static_cast<std::int32_t>(number32(body, 8));
        m_bits = static_cast<int>(number16(body, 14));
        if (number32(body, 16) != 0 || (m_bits != 24 && m_bits != 32))
            return fail(ErrorCode::Unsupported, "the clip is compressed");
        if (width < 1 || height < 1)
            return fail(ErrorCode::Damaged, "the clip has no size");
        if (width > kMaxClipEdge || height > kMaxClipEdge)
            return fail(ErrorCode::TooLarge, "the clip's pictures are too large");
        m_clip.width = width;
        m_clip.height = height;
    }

    void readFrame(std::string_view body)
    {
        if (m_clip.width == 0)
            return fail(ErrorCode::Damaged, "a frame stands before the format record");
        const std::size_t row = rowBytes(m_clip.width, m_bits);
        if (body.size() < row * static_cast<std::size_t>(m_clip.height))
            return fail(ErrorCode::Damaged, "a frame is cut short");
        std::vector<std::uint32_t> frame;
        frame.reserve(static_cast<std::size_t>(m_clip.width) * static_cast<std::size_t>(m_clip.height));
        // Rows are stored bottom first.
        for (int y = m_clip.height - 1; y >= 0; --y)
            for (int x = 0; x < m_clip.width; ++x) {
                const std::size_t at = static_cast<std::size_t>(y) * row +
                                       static_cast<std::size_t>(x) * static_cast<std::size_t>(m_bits) / 8;
                frame.push_back(number16(body, at) |
                                static_cast<std::uint32_t>(static_cast<unsigned char>(body[at + 2])) << 16);
            }
        m_clip.frames.push_back(std::move(frame));
    }

    void fail(ErrorCode code, const char* text) { m_error = Error{code, text}; }

    Clip m_clip;
    int m_bits = 0;
    std::optional<Error> m_error;
};

void add16(std::string& out, std::uint32_t value)
{
    out += static_cast<char>(value & 0xff);
    out += static_cast<char>(value >> 8 & 0xff);
}

void add32(std::string& out, std::uint32_t value)
{
    add16(out, value & 0xffff);
    add16(out, value >> 16);
}

std::string chunk(std::string_view name, const std::string& body)
{
    std::string out(name);
    add32(out, static_cast<std::uint32_t>(body.size()));
    out += body;
    if (body.size() % 2 != 0)
        out += '\0';
    return out;
}

std::string list(std::string_view kind, const std::string& body)
{
    return chunk("LIST", std::string(kind) + body);
}

std::string mainHeader(const Clip& clip, std::uint32_t frameSize)
{
    std::string out;
    add32(out, static_cast<std::uint32_t>(clip.frameMs) * 1000);
    add32(out, static_cast<std::uint32_t>(frameSize * 1000ULL / static_cast<std::uint32_t>(clip.frameMs)));
    add32(out, 0);
    add32(out, kHasIndex);
    add32(out, static_cast<std::uint32_t>(clip.frames.size()));
    add32(out, 0);
    add32(out, 1);
    add32(out, frameSize);
    add32(out, static_cast<std::uint32_t>(clip.width));
    add32(out, static_cast<std::uint32_t>(clip.height));
    out.resize(kMainHeaderSize);
    return chunk("avih", out);
}

std::string streamHeader(const Clip& clip, std::uint32_t frameSize)
{
    std::string out = "vidsDIB ";
    out.resize(20);
    add32(out, static_cast<std::uint32_t>(clip.frameMs)); // frames a second are 1000 over this
    add32(out, 1000);
    add32(out, 0);
    add32(out, static_cast<std::uint32_t>(clip.frames.size()));
    add32(out, frameSize);
    add32(out, 0xffffffff);
    add32(out, 0);
    out.resize(kStreamHeaderSize - 4);
    add16(out, static_cast<std::uint32_t>(clip.width));
    add16(out, static_cast<std::uint32_t>(clip.height));
    return chunk("strh", out);
}

std::string formatRecord(const Clip& clip, std::uint32_t frameSize)
{
    std::string out;
    add32(out, kBitmapHeaderSize);
    add32(out, static_cast<std::uint32_t>(clip.width));
    add32(out, static_cast<std::uint32_t>(clip.height));
    add16(out, 1);
    add16(out, 24);
    add32(out, 0);
    add32(out, frameSize);
    out.resize(kBitmapHeaderSize);
    return chunk("strf", out);
}

std::string frameBytes(const Clip& clip, const std::vector<std::uint32_t>& frame)
{
    std::string out;
    const auto width = static_cast<std::size_t>(clip.width);
    for (std::size_t y = static_cast<std::size_t>(clip.height); y-- > 0;) {
        const std::size_t start = out.size();
        for (std::size_t x = 0; x < width; ++x) {
            const std::uint32_t pixel = frame[y * width + x];
            add16(out, pixel & 0xffff);
            out += static_cast<char>(pixel >> 16 & 0xff);
        }
        out.resize(start + rowBytes(clip.width, 24));
    }
    return out;
}

} // namespace

Result<Clip> readClip(std::string_view bytes)
{
    return ClipReader().read(bytes);
}

std::string writeClip(const Clip& clip)
{
    const auto frameSize =
        static_cast<std::uint32_t>(rowBytes(clip.width, 24) * static_cast<std::size_t>(clip.height));
    std::string frames;
    std::string index;
    for (const std::vector<std::uint32_t>& frame : clip.frames) {
        index += "00db";
        add32(index, kKeyFrame);
        add32(index, static_cast<std::uint32_t>(frames.size() + 4)); // counted from the list's kind
        add32(index, frameSize);
        frames += chunk("00db", frameBytes(clip, frame));
    }
    const std::string stream = list("strl", streamHeader(clip, frameSize) + formatRecord(clip, frameSize));
    return chunk("RIFF", "AVI " + list("hdrl", mainHeader(clip, frameSize) + stream) + list("movi", frames) +
                             chunk("idx1", index));
}

} // namespace zv
