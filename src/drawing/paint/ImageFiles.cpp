#include "drawing/paint/ImageFiles.h"

#include "platform/Text.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QImageReader>

namespace zv::dwg {

namespace {

constexpr qint64 kLargestFile = qint64{256} << 20;
constexpr int kLongestSide = 2048;
/// Pixels of all pictures of one drawing as they are kept.
constexpr qint64 kMostPixels = 32'000'000;

/// What the pictures of a drawing may still come to.
struct Room {
    qint64 kept, stored;
};

QString qtext(const Text& text)
{
    return QString::fromUtf16(text.data(), qsizetype(text.size()));
}

bool isPicture(const QString& path)
{
    // A pipe or a device could keep the program waiting.
    const QFileInfo info(path);
    return info.isFile() && info.size() > 0 && info.size() <= kLargestFile;
}

/// The file of a name in any case; empty when the folder has none.
QString inFolder(const QDir& folder, const QString& name)
{
    if (isPicture(folder.filePath(name)))
        return folder.filePath(name);
    for (const QString& file : folder.entryList(QDir::Files))
        if (file.compare(name, Qt::CaseInsensitive) == 0 && isPicture(folder.filePath(file)))
            return folder.filePath(file);
    return {};
}

QString findPicture(const Text& stored, const QDir& folder)
{
    QString path = qtext(stored);
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    const QString name = path.section(QLatin1Char('/'), -1);
    if (name.isEmpty())
        return {};
    // A drawing must not make the program call at any machine that it names.
    const bool elsewhere = path.startsWith(QLatin1String("//"));
    const bool whole = QDir::isAbsolutePath(path);
    if (!elsewhere && isPicture(whole ? path : folder.filePath(path)))
        return whole ? path : folder.filePath(path);
    return inFolder(folder, name);
}

QImage readPicture(const QString& path, Room& left)
{
    static const QList<QByteArray> kPlain{"bmp", "gif", "jpeg", "pcx", "png", "tga", "tiff", "webp"};
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(false);
    QSize size = reader.size();
    if (!kPlain.contains(reader.format()) || size.isEmpty())
        return {};
    const qint64 stored = qint64{size.width()} * size.height();
    if (std::max(size.width(), size.height()) > kLongestSide)
        size.scale(kLongestSide, kLongestSide, Qt::KeepAspectRatio);
    size = size.expandedTo({1, 1});
    const qint64 kept = qint64{size.width()} * size.height();
    if (kept > left.kept || stored > left.stored)
        return {};
    left.kept -= kept;
    left.stored -= stored;
    if (size != reader.size())
        reader.setScaledSize(size);
    return reader.read();
}

} // namespace

void loadImages(Scene& scene, const std::string& drawing, std::int64_t mostStored)
{
    const QDir folder = QFileInfo(qtext(wide(drawing))).absoluteDir();
    QHash<QString, std::shared_ptr<const LoadedImage>> known;
    Room left{kMostPixels, mostStored};
    for (SceneImage& image : scene.images) {
        const QString path = findPicture(image.file, folder);
        if (path.isEmpty())
            continue;
        if (!known.contains(path)) {
            QImage picture = readPicture(path, left);
            std::shared_ptr<const LoadedImage> loaded;
            if (!picture.isNull())
                loaded = std::make_shared<const LoadedImage>(LoadedImage{std::move(picture)});
            known.insert(path, loaded);
        }
        image.loaded = known.value(path);
    }
}

} // namespace zv::dwg
