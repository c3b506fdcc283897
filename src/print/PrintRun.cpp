#include "print/PrintRun.h"

#include "library/ListFile.h"
#include "platform/Text.h"

namespace zv {

namespace {

/// The print pass with what it remembers from drawing to drawing.
class PrintPass {
public:
    PrintPass(int total, PrintRunWindow& window) : m_window(window), m_total(total) {}

    bool hasBegun() const { return m_done > 0; }

    /// False when the whole pass is to end.
    bool printLibrary(const std::vector<ListLine>& lines)
    {
        for (const ListLine& line : lines) {
            const bool shown = line.separated && m_window.showDrawing(line.path);
            m_window.showCount(++m_done, m_total);
            // Before the print a stop leaves this library, behind it the whole pass.
            if (!m_window.turn())
                return true;
            if (!line.separated)
                continue;
            print(shown);
            m_window.endDrawing(line.path);
            if (!m_window.turn())
                return false;
        }
        return true;
    }

private:
    /// The dialog waits for a drawing that can be shown.
    void print(bool shown)
    {
        if (m_printedFirst) {
            m_window.printSilently();
            m_window.startHelper();
        } else if (shown) {
            m_window.printWithDialog();
            m_printedFirst = true;
        }
    }

    PrintRunWindow& m_window;
    int m_total;
    int m_done = 0;
    bool m_printedFirst = false;
};

} // namespace

PrintedLibrary printedLibrary(const std::string& name, const std::string& installationFolder,
                              const std::string& loginName, const std::string& myLibPath)
{
    if (sameText(name, loginName))
        return {name, myLibPath};
    return {name, listFilePath(installationFolder, name)};
}

Result<int> countDrawings(const std::vector<PrintedLibrary>& libraries, PrintRunWindow& window)
{
    int total = 0;
    for (const PrintedLibrary& library : libraries) {
        const auto lines = readListFile(library.listPath);
        if (!lines)
            return lines.error();
        for (std::size_t i = 0; i < lines->size(); ++i) {
            ++total;
            if (!window.turn())
                break;
        }
    }
    return total;
}

Result<void> printDrawings(const std::vector<PrintedLibrary>& libraries, int total, PrintRunWindow& window)
{
    PrintPass pass(total, window);
    for (const PrintedLibrary& library : libraries) {
        window.beginLibrary(library.name);
        const auto lines = readListFile(library.listPath);
        if (!lines && !pass.hasBegun())
            return lines.error();
        if (lines && !pass.printLibrary(*lines))
            break;
    }
    return {};
}

} // namespace zv
