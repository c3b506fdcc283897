#pragma once

#include "platform/Files.h"
#include "platform/Workers.h"

#include <QImage>

#include <atomic>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace zv {

/// The pictures of a panel's drawings, read side by side, so that on a slow share a panel takes hardly longer
/// than one drawing. The panel that will be asked for next is read ahead; of the others nothing is kept.
class PanelPictures {
public:
    /// Starts reading a panel, each picture for a cell of `room`. Of what was read ahead, a file that is as
    /// it was then is not read again.
    void read(const std::vector<std::string>& paths, QSize room);
    /// The picture of the panel's drawing of `index`, from 0, once it is there. Each can be taken once.
    /// Errors and null pictures as readThumbnail().
    Result<QImage> take(std::size_t index);

    /// Reads a panel beside all else. What was read ahead before and is not asked for again is forgotten.
    void readAhead(const std::vector<std::string>& paths, QSize room);

private:
    struct Picture {
        Result<FileStamp> stamp; ///< Of the file before it was read.
        Result<QImage> image;
    };
    struct Ahead {
        std::shared_future<Picture> picture;
        std::shared_ptr<std::atomic<bool>> forgotten;
    };
    static Result<QImage> readAgainIfChanged(const std::string& path, QSize room, const Ahead& ahead);

    Workers m_workers;
    std::vector<std::future<Result<QImage>>> m_panel;
    std::map<std::string, Ahead> m_ahead;
};

} // namespace zv
