#include "library/mountedmedia.h"

#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>

#include <algorithm>

namespace tarvel4 {

QVector<MountedMedium> MountedMedia::list()
{
    QVector<MountedMedium> media;
    const QList<QStorageInfo> volumes = QStorageInfo::mountedVolumes();
    for (const QStorageInfo &volume : volumes) {
        const QString root = volume.rootPath();
        if (!volume.isValid() || !volume.isReady() || !isMediumRoot(root))
            continue;
        media.append({root, nameOf(root, volume.name()), volume.bytesAvailable()});
    }
    std::sort(media.begin(), media.end(),
              [](const MountedMedium &a, const MountedMedium &b) { return a.root < b.root; });
    return media;
}

QString MountedMedia::nameOf(const QString &root, const QString &label)
{
    constexpr int driveLength = 2; // "E:"
    if (root.size() != driveLength + 1 || root.at(1) != QLatin1Char(':'))
        return label.isEmpty() ? QFileInfo(root).fileName() : label;
    const QString drive = root.left(driveLength);
    return label.isEmpty() ? drive : QStringLiteral("%1 (%2)").arg(label, drive);
}

bool MountedMedia::isMediumRoot(const QString &root)
{
#ifdef Q_OS_WIN
    return root.compare(QDir::rootPath(), Qt::CaseInsensitive) != 0;
#else
    const QStringList folders{QStringLiteral("/media/"), QStringLiteral("/run/media/"),
                              QStringLiteral("/Volumes/")};
    return std::any_of(folders.begin(), folders.end(),
                       [&root](const QString &folder) { return root.startsWith(folder); });
#endif
}

QStringList MountedMedia::userPlaces()
{
    const QString user = qEnvironmentVariable("USER", QFileInfo(QDir::homePath()).fileName());
    return {QStringLiteral("/run/media/") + user, QStringLiteral("/media/") + user};
}

QString MountedMedia::startFolder(const QVector<MountedMedium> &media, const QStringList &places)
{
    if (media.size() == 1)
        return media.constFirst().root;
    if (!media.isEmpty())
        return QFileInfo(media.constFirst().root).path();
    const auto place = std::find_if(places.begin(), places.end(),
                                    [](const QString &path) { return QFileInfo(path).isDir(); });
    return place == places.end() ? QString() : *place;
}

} // namespace tarvel4
