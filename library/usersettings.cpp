#include "library/usersettings.h"

#include <QSettings>
#include <QStandardPaths>

namespace tarvel4 {

namespace {

QSettings store()
{
    return QSettings(QLatin1String(UserSettings::organisation),
                     QLatin1String(UserSettings::application));
}

QVariant read(const char *key, const QVariant &fallback)
{
    return store().value(QLatin1String(key), fallback);
}

void write(const char *key, const QVariant &value)
{
    store().setValue(QLatin1String(key), value);
}

constexpr char languageKey[] = "language";
constexpr char logEnabledKey[] = "logenabled";
constexpr char logClearKey[] = "logclear";
constexpr char copyrightAskKey[] = "copyrightAsk";
constexpr char mediaRootKey[] = "mediaroot";

} // namespace

QString UserSettings::dataFolder()
{
    // AppLocalDataLocation of both programs, whatever their files are called
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QLatin1Char('/')
        + QLatin1String(organisation) + QLatin1Char('/') + QLatin1String(application);
}

QString UserSettings::language(const QString &fallback)
{
    return read(languageKey, fallback).toString();
}

void UserSettings::setLanguage(const QString &language)
{
    write(languageKey, language);
}

bool UserSettings::logEnabled()
{
    return read(logEnabledKey, false).toBool();
}

void UserSettings::setLogEnabled(bool enabled)
{
    write(logEnabledKey, enabled);
}

bool UserSettings::logClear()
{
    return read(logClearKey, false).toBool();
}

void UserSettings::setLogClear(bool clear)
{
    write(logClearKey, clear);
}

bool UserSettings::copyrightAsk(bool fallback)
{
    return read(copyrightAskKey, fallback).toBool();
}

void UserSettings::setCopyrightAsk(bool ask)
{
    write(copyrightAskKey, ask);
}

QString UserSettings::mediaRoot()
{
    return read(mediaRootKey, QString()).toString();
}

void UserSettings::setMediaRoot(const QString &root)
{
    write(mediaRootKey, root);
}

} // namespace tarvel4
