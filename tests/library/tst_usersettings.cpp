#include "library/usersettings.h"

#include "tests/library/texts.h"

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
};

void tst_UserSettings::init()
{
    QSettings(text("kvaro"), text("tarvel4soft")).clear();
}

void tst_UserSettings::defaults()
{
    QCOMPARE(UserSettings::language(text("--")), text("--"));
    QCOMPARE(UserSettings::language(text("it")), text("it"));
    QCOMPARE(UserSettings::logEnabled(), false);
    QCOMPARE(UserSettings::logClear(), false);
    QCOMPARE(UserSettings::copyrightAsk(), true);
    QCOMPARE(UserSettings::copyrightAsk(false), false);
    QCOMPARE(UserSettings::mediaRoot(), text(""));
}

void tst_UserSettings::valuesAreKeptUnderTheirKeys()
{
    UserSettings::setLanguage(text("de"));
    UserSettings::setLogEnabled(true);
    UserSettings::setLogClear(true);
    UserSettings::setCopyrightAsk(false);
    UserSettings::setMediaRoot(text("/media/card"));

    QCOMPARE(UserSettings::language(text("it")), text("de"));
    QCOMPARE(UserSettings::logEnabled(), true);
    QCOMPARE(UserSettings::logClear(), true);
    QCOMPARE(UserSettings::copyrightAsk(), false);
    QCOMPARE(UserSettings::mediaRoot(), text("/media/card"));

    const QSettings store(text("kvaro"), text("tarvel4soft"));
    QStringList keys = store.allKeys();
    keys.sort();
    QCOMPARE(keys, strings({"copyrightAsk", "language", "logclear", "logenabled", "mediaroot"}));
    UserSettings::setCopyrightAsk(true);
    QCOMPARE(UserSettings::copyrightAsk(false), true);
}

QTEST_GUILESS_MAIN(tst_UserSettings)
#include "tst_usersettings.moc"
