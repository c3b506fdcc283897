#pragma once

#include "drawing/container/FilePages.h"

#include <algorithm>

namespace zv::dwg {

/// The pages of a file in order, gaps among them, while some are replaced: new pages go behind all others,
/// and the pages that they stand for become gaps. So no other page moves; pages can be hidden by their place,
/// and the preview tells places in the file.
class PageList {
public:
    /// The first page stands at `begin`.
    PageList(std::vector<FilePage> pages, std::uint64_t begin) : m_pages(std::move(pages)), m_begin(begin) {}

    const std::vector<FilePage>& pages() const { return m_pages; }
    std::uint64_t end() const
    {
        return m_pages.empty() ? m_begin : m_pages.back().position + m_pages.back().size;
    }
    std::int64_t highest() const
    {
        return extreme([](std::int64_t a, std::int64_t b) { return std::max(a, b); });
    }
    std::int64_t lowest() const
    {
        return extreme([](std::int64_t a, std::int64_t b) { return std::min(a, b); });
    }

    void add(std::int64_t number, std::uint64_t size) { m_pages.push_back({number, size, end()}); }
    /// Makes a gap, of that number, of a page.
    void free(std::int64_t number, std::int64_t gap)
    {
        for (FilePage& page : m_pages)
            if (!page.isGap() && page.number == number)
                page.number = gap;
    }
    /// Forgets the gaps behind the last page, so that a file does not grow with every change.
    void dropLastGaps()
    {
        while (!m_pages.empty() && m_pages.back().isGap())
            m_pages.pop_back();
    }

private:
    template <class Choose> std::int64_t extreme(Choose choose) const
    {
        std::int64_t number = 0;
        for (const FilePage& page : m_pages)
            number = choose(number, page.number);
        return number;
    }

    std::vector<FilePage> m_pages;
    std::uint64_t m_begin;
};

} // namespace zv::dwg
