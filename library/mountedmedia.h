#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace tarvel4 {

/** A card or a stick that is mounted now. */
struct MountedMedium
{
    QString root;
    QString name; ///< of its root and label
    qint64 free = 0; ///< bytes that the user may write
};

/** Where the user's cards and sticks are. */
namespace MountedMedia {

/** In the order of their roots. */
QVector<MountedMedium> list();

/** The label, else the last part of the root; a drive's letter stands behind its label. */
QString nameOf(const QString &root, const QString &label);

/** True for a mount point in one of the folders where systems mount what is plugged in. */
bool isMediumRoot(const QString &root);

/** Where this system mounts what the user plugs in. */
QStringList userPlaces();

/** A folder to choose a place on one of \a media from: the root of the only one, else the folder
 * that holds the first one; without any, the first of \a places that is there, else nothing. */
QString startFolder(const QVector<MountedMedium> &media, const QStringList &places = userPlaces());

} // namespace MountedMedia

} // namespace tarvel4
