#pragma once

#include <string>

#include <windows.h>

namespace zv {

/// The entries of a folder, one after the other, without the folder itself and its parent.
class FoundEntries {
public:
    explicit FoundEntries(const std::string& folder);
    FoundEntries(const FoundEntries&) = delete;
    FoundEntries& operator=(const FoundEntries&) = delete;
    ~FoundEntries();

    /// False at the end, and where the folder cannot be read any further.
    bool next();
    /// Whether next() has come to the end; else the system's last error says what is wrong.
    bool atEnd() const { return m_atEnd; }

    /// A name that is no text at all is known by its short name as well; empty when it has none.
    std::string name() const;
    DWORD attributes() const { return m_entry.dwFileAttributes; }

private:
    WIN32_FIND_DATAW m_entry{};
    HANDLE m_find;
    bool m_isFirst = true;
    bool m_atEnd = false;
};

} // namespace zv
