#include "songs/freename.h"

#include <QFileInfo>

QString freeName(const QString &stem, const QString &suffix)
{
    QString name = stem + suffix;
    for (int number = 1; QFileInfo::exists(name) || QFileInfo(name).isSymLink(); ++number)
        name = stem + QLatin1Char('.') + QString::number(number) + suffix;
    return name;
}
