#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace zv::dwg {

/// Packed bytes, read one after the other. Past the end come zeros, and the input stays failed.
class PackedInput {
public:
    explicit PackedInput(std::span<const std::byte> bytes)
        : m_at(reinterpret_cast<const std::uint8_t*>(bytes.data())), m_end(m_at + bytes.size())
    {
    }
    bool ok() const { return m_ok; }
    std::size_t left() const { return static_cast<std::size_t>(m_end - m_at); }
    unsigned byte()
    {
        if (m_at == m_end) {
            m_ok = false;
            return 0;
        }
        return *m_at++;
    }
    /// `count` bytes; null when they are not there.
    const std::uint8_t* take(std::size_t count)
    {
        if (count > left()) {
            m_ok = false;
            return nullptr;
        }
        const std::uint8_t* start = m_at;
        m_at += count;
        return start;
    }

private:
    const std::uint8_t* m_at;
    const std::uint8_t* m_end;
    bool m_ok = true;
};

/// The unpacked bytes: what goes beyond the end is dropped.
class UnpackedOutput {
public:
    explicit UnpackedOutput(std::span<std::byte> bytes)
        : m_start(reinterpret_cast<std::uint8_t*>(bytes.data())), m_size(bytes.size())
    {
    }
    std::size_t written() const { return m_written; }
    bool full() const { return m_written == m_size; }
    std::uint8_t* room(std::size_t& count)
    {
        count = std::min(count, m_size - m_written);
        std::uint8_t* start = m_start + m_written;
        m_written += count;
        return start;
    }
    void literal(const std::uint8_t* from, std::size_t count)
    {
        std::uint8_t* to = room(count);
        if (count != 0)
            std::memcpy(to, from, count);
    }
    /// Repeats `count` bytes from `distance` bytes back; the two may overlap. False when that is before the
    /// start.
    bool repeat(std::size_t distance, std::size_t count)
    {
        if (distance == 0 || distance > m_written)
            return false;
        std::uint8_t* to = room(count);
        const std::uint8_t* from = to - distance;
        if (distance >= count) {
            std::memcpy(to, from, count);
        } else if (distance == 1) {
            std::memset(to, *from, count);
        } else {
            for (std::size_t i = 0; i < count; ++i)
                to[i] = from[i];
        }
        return true;
    }

private:
    std::uint8_t* m_start;
    std::size_t m_size;
    std::size_t m_written = 0;
};

} // namespace zv::dwg
