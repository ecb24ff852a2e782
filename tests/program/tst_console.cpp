#include "cli/console.h"

#include "tests/storage/table.h"

#include <QtTest>

#include <clocale>
#include <langinfo.h>

using namespace tarvel4;

/** The locale that the command line gives Qt: UTF-8 for file names, all else as the user has it.
 * Debian's Qt takes UTF-8 for them in every locale, so that no command shows what stands here. */
class tst_Console : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fileNamesAreUtf8WhateverTheLocale_data()
    {
        const Table<QString, QString, QString> row; // environment, then messages and numbers
        const QString italian = "it_IT.ISO-8859-1"_s;
        row("LC_ALL in another encoding", "LC_ALL=it_IT.ISO-8859-1", italian, italian);
        row("LC_ALL comes before LC_MESSAGES and LANG",
            "LC_ALL=it_IT.ISO-8859-1 LC_MESSAGES=C LANG=C.UTF-8", italian, italian);
        row("LC_ALL=C", "LC_ALL=C LANG=it_IT.ISO-8859-1", "C", "C");
        row("LANG in another encoding", "LANG=it_IT.ISO-8859-1", italian, italian);
        row("LC_CTYPE in another encoding", "LC_CTYPE=it_IT.ISO-8859-1 LANG=C.UTF-8", "C.UTF-8",
            "C.UTF-8");
        row("LC_MESSAGES stays", "LANG=C LC_MESSAGES=it_IT.ISO-8859-1", italian, "C");
        row("nothing is set", "", "C", "C");
    }
    void fileNamesAreUtf8WhateverTheLocale()
    {
        const auto [environment, messages, numbers] = cells<QString, QString, QString>();
        if (!std::setlocale(LC_ALL, "it_IT.ISO-8859-1"))
            QSKIP("The build could not make the locale");
        setLocale(environment);
        Console::prepare();
        QVERIFY(std::setlocale(LC_ALL, ""));
        QCOMPARE(QString::fromLatin1(nl_langinfo(CODESET)), "UTF-8"_s);
        QCOMPARE(QString::fromLatin1(std::setlocale(LC_MESSAGES, nullptr)), messages);
        QCOMPARE(QString::fromLatin1(std::setlocale(LC_NUMERIC, nullptr)), numbers);
    }

    void aLocaleInUtf8IsLeftAlone()
    {
        setLocale("LC_ALL=C.UTF-8 LANG=C"_s);
        Console::prepare();
        QCOMPARE(qgetenv("LC_ALL"), QByteArray("C.UTF-8"));
        QCOMPARE(qgetenv("LANG"), QByteArray("C"));
        QVERIFY(!qEnvironmentVariableIsSet("LC_CTYPE"));
    }

private:
    static void setLocale(const QString &environment)
    {
        std::setlocale(LC_ALL, "C"); // as a program starts
        for (const char *name : {"LC_ALL", "LC_CTYPE", "LC_MESSAGES", "LC_COLLATE", "LANG"})
            qunsetenv(name);
        const QStringList variables = environment.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        for (const QString &variable : variables) {
            const QByteArray text = variable.toLatin1();
            const int end = static_cast<int>(text.indexOf('='));
            qputenv(text.left(end).constData(), text.mid(end + 1));
        }
    }
};

QTEST_GUILESS_MAIN(tst_Console)
#include "tst_console.moc"
