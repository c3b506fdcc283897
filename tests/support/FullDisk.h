#pragma once

namespace zv {

/// Files of this process cannot grow past a size while this lives, as on a full disk.
class FullDisk {
public:
    /// `size` in bytes.
    explicit FullDisk(unsigned long size);
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk();

    /// False where the system knows no such limit.
    static bool canBeMade();

private:
    unsigned long m_limit;
    void (*m_handler)(int);
};

} // namespace zv
