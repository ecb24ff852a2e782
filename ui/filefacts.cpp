#include "ui/filefacts.h"

#include <QDateTime>
#include <QFileInfo>
#include <QLocale>

namespace tarvel4 {

namespace {

constexpr qint64 coarsestStep = 2000; // of a date, in milliseconds

} // namespace

QString FileFacts::sentence(const QString &path, const QString &other)
{
    const QFileInfo info(path);
    const QDateTime date = info.lastModified();
    const QDateTime otherDate = QFileInfo(other).lastModified();
    const QLocale locale = QLocale::system();
    const QString facts =
        tr("%1 byte, %2")
            .arg(locale.toString(info.size()), locale.toString(date, QLocale::ShortFormat));
    const bool isNewer = otherDate.isValid() && otherDate.msecsTo(date) > coarsestStep;
    return isNewer ? tr("%1 (più recente)").arg(facts) : facts;
}

} // namespace tarvel4
