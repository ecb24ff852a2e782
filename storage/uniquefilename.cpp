#include "storage/uniquefilename.h"

#include <QFileInfo>

namespace tarvel4 {

QString uniqueFileName(const QString &stem, const QString &suffix)
{
    QString name = stem + suffix;
    for (int number = 1; QFileInfo::exists(name) || QFileInfo(name).isSymLink(); ++number)
        name = stem + QLatin1Char('.') + QString::number(number) + suffix;
    return name;
}

} // namespace tarvel4
