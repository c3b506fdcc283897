#pragma once

#include <QTimer>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace zv {

/// A total in units of 1024 bytes with a file added to it. It is rounded at every file, ties to the even
/// number, so many small files can come to 0. A file that cannot be asked adds nothing.
std::int32_t totalWith(std::int32_t total, const std::string& path);

/// Adds up the sizes of many files, some at a time, with the program's events in between.
class SizeCount {
public:
    explicit SizeCount(std::function<void(std::int32_t total)> tell);

    /// Begins anew. `tell` is called with what the files come to so far, and for the last time with the
    /// whole. As many as there is time for without a pause are added up before this returns.
    void start(std::vector<std::string> paths);
    /// Ends the count; nothing more is told.
    void stop();

private:
    void addSome();

    std::function<void(std::int32_t)> m_tell;
    std::vector<std::string> m_paths;
    std::size_t m_next = 0;
    std::int32_t m_total = 0;
    QTimer m_timer;
};

} // namespace zv
