#include "library/usersettings.h"

#include "tests/library/testfiles.h"

#include <QSettings>
#include <QtTest>

using namespace tarvel4;

class tst_UserSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void defaults();
    void valuesAreKeptUnderTheirKeys();
    void theFallbackIsTheCallersWhereNothingIsStored();
};

void tst_UserSettings::init()
{
    QSettings(QStringLiteral("kvaro"), QStringLiteral("tarvel4soft")).clear();
}

void tst_UserSettings::defaults()
{
    QCOMPARE(UserSettings::language(QStringLiteral("--")), QStringLiteral("--"));
    QCOMPARE(UserSettings::language(QStringLiteral("it")), QStringLiteral("it"));
    QCOMPARE(UserSettings::logEnabled(), false);
    QCOMPARE(UserSettings::logClear(), false);
    QCOMPARE(UserSettings::copyrightAsk(), true);
    QCOMPARE(UserSettings::mediaRoot(), QString(QLatin1String("")));
}

void tst_UserSettings::valuesAreKeptUnderTheirKeys()
{
    UserSettings::setLanguage(QStringLiteral("de"));
    UserSettings::setLogEnabled(true);
    UserSettings::setLogClear(true);
    UserSettings::setCopyrightAsk(false);
    UserSettings::setMediaRoot(QStringLiteral("/media/card"));

    QCOMPARE(UserSettings::language(QStringLiteral("it")), QStringLiteral("de"));
    QCOMPARE(UserSettings::logEnabled(), true);
    QCOMPARE(UserSettings::logClear(), true);
    QCOMPARE(UserSettings::copyrightAsk(), false);
    QCOMPARE(UserSettings::mediaRoot(), QStringLiteral("/media/card"));

    const QSettings store(QStringLiteral("kvaro"), QStringLiteral("tarvel4soft"));
    QStringList keys = store.allKeys();
    keys.sort();
    QCOMPARE(keys,
             QStringList({QStringLiteral("copyrightAsk"), QStringLiteral("language"),
                          QStringLiteral("logclear"), QStringLiteral("logenabled"),
                          QStringLiteral("mediaroot")}));
    QCOMPARE(store.value(QStringLiteral("copyrightAsk")).toBool(), false);
}

void tst_UserSettings::theFallbackIsTheCallersWhereNothingIsStored()
{
    QCOMPARE(UserSettings::copyrightAsk(false), false);
    UserSettings::setCopyrightAsk(true);
    QCOMPARE(UserSettings::copyrightAsk(false), true);
}

QTEST_GUILESS_MAIN(tst_UserSettings)
#include "tst_usersettings.moc"
