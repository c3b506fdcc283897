#pragma once

#include "config/FileNames.h"
#include "platform/Files.h"
#include "search/KeywordScan.h"

#include <string>
#include <utility>
#include <vector>

namespace zv {

/// Somebody who searches without a window and reads afterwards what came of it.
class SilentScan final : public ScanWindow, public Messages {
public:
    /// `library` is the one to search; empty for all of them.
    SilentScan(std::string masterFolder, std::string library, std::string word)
        : m_folder(std::move(masterFolder)), m_library(std::move(library)), m_word(std::move(word))
    {
    }

    bool allLibrariesChecked() const override { return m_library.empty(); }
    std::string library() const override { return m_library; }
    Keywords keywords() const override { return {m_word}; }
    std::string masterFolder() const override { return m_folder; }
    std::string masterProfile() const override { return joinPath(m_folder, kProfileName); }
    void showRunBegins() override {}
    void showDrawing(const std::string&, const std::string&, const ScanProgress&) override {}
    void showHit(const std::string& path, int) override { hits.push_back(path); }
    void showRunEnded(int count) override { counted = count; }
    Messages& messages() override { return *this; }
    void show(const Message& message) override { told.push_back(message.text); }
    bool ask(const Message&) override { return false; }
    std::optional<bool> askOrClose(const Message&) override { return false; }
    bool confirm(const Message&) override { return false; }
    bool turn(Turn) override { return true; }
    void closeAllFiles() override {}
    unsigned filesClosed() const override { return 0; }
    void unload() override {}

    std::vector<std::string> hits, told;
    int counted = -1;

private:
    std::string m_folder, m_library, m_word;
};

} // namespace zv
