#include "library/songpath.h"

#include <QRegularExpression>

namespace tarvel4 {

QString SongPath::fileName(const QString &path)
{
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
}

QString SongPath::baseName(const QString &path)
{
    const QString name = fileName(path);
    return name.left(name.lastIndexOf(QLatin1Char('.')));
}

QString SongPath::catalogueKey(const QString &name)
{
    static const QRegularExpression extension(QStringLiteral("\\.{1,1}\\w{3,3}$"));
    return QString(name).remove(extension).toUpper();
}

} // namespace tarvel4
