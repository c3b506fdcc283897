#include "controls/PanelPictures.h"

#include "controls/ThumbnailPicture.h"

namespace zv {

void PanelPictures::read(const std::vector<std::string>& paths, QSize room)
{
    m_panel.clear();
    for (const std::string& path : paths) {
        const auto known = m_ahead.find(path);
        if (known == m_ahead.end())
            m_panel.push_back(m_workers.start([path, room] { return readThumbnail(path, room); }));
        else
            m_panel.push_back(m_workers.start(
                [path, room, ahead = known->second] { return readAgainIfChanged(path, room, ahead); }));
    }
}

Result<QImage> PanelPictures::readAgainIfChanged(const std::string& path, QSize room, const Ahead& ahead)
{
    const Picture& known = ahead.picture.get();
    if (const Result<FileStamp> now = fileStamp(path); known.stamp && now && *now == *known.stamp)
        return known.image;
    return readThumbnail(path, room);
}

Result<QImage> PanelPictures::take(std::size_t index)
{
    return m_panel[index].get();
}

void PanelPictures::readAhead(const std::vector<std::string>& paths, QSize room)
{
    std::map<std::string, Ahead> before;
    before.swap(m_ahead);
    for (const std::string& path : paths) {
        if (auto known = before.extract(path)) {
            m_ahead.insert(std::move(known));
            continue;
        }
        if (m_ahead.contains(path))
            continue;
        auto forgotten = std::make_shared<std::atomic<bool>>(false);
        auto picture = m_workers.start([path, room, forgotten]() -> Picture {
            if (*forgotten)
                return {Error{ErrorCode::Cancelled, {}}, Error{ErrorCode::Cancelled, {}}};
            Result<FileStamp> stamp = fileStamp(path);
            return {std::move(stamp), readThumbnail(path, room)};
        });
        m_ahead.emplace(path, Ahead{picture.share(), std::move(forgotten)});
    }
    for (const auto& [path, ahead] : before)
        *ahead.forgotten = true;
}

} // namespace zv
