#include "ui/statefile.h"

#include "library/usersettings.h"

#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

namespace tarvel4 {

namespace {

constexpr qint64 largest = 1 << 20; // in bytes; ours has some hundred

/** False where reading could wait for the other end of a pipe, or take long. */
bool isUsable(const QString &path)
{
    const QFileInfo info(path);
    return !info.exists() || (info.isFile() && info.size() <= largest);
}

} // namespace

QString StateFile::path()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QLatin1Char('/') + QLatin1String(UserSettings::organisation) + QLatin1Char('/')
        + QLatin1String(UserSettings::application) + QLatin1String("-window.ini");
}

QString StateFile::value(const QString &key)
{
    if (!isUsable(path()))
        return {};
    const QSettings file(path(), QSettings::IniFormat);
    return file.status() == QSettings::NoError ? file.value(key).toString() : QString();
}

void StateFile::setValue(const QString &key, const QString &value)
{
    if (!isUsable(path()))
        return;
    QSettings file(path(), QSettings::IniFormat);
    if (file.status() == QSettings::FormatError)
        file.clear(); // what is left of it is worth nothing
    file.setValue(key, value);
}

} // namespace tarvel4
