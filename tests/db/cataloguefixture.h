#pragma once

#include "db/database.h"
#include "tests/storage/table.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QtTest>

namespace tarvel4 {

/** Keeps the messages of its lifetime, of every kind. */
class MessageCapture
{
public:
    MessageCapture()
    {
        messages().clear();
        m_previous = qInstallMessageHandler(&MessageCapture::keep);
    }
    ~MessageCapture() { qInstallMessageHandler(m_previous); }
    Q_DISABLE_COPY(MessageCapture)

    static QStringList &messages()
    {
        static QStringList captured;
        return captured;
    }

private:
    static void keep(QtMsgType, const QMessageLogContext &, const QString &text)
    {
        messages().append(text);
    }

    QtMessageHandler m_previous;
};

/** What the tests of the catalogue's database share. */
class CatalogueTest : public QObject
{
protected:
    bool open() { return m_database->init(m_catalogue); }
    void closeDatabase()
    {
        m_database = std::make_unique<Database>();
        QFile::remove("songsdb_debug"_s);
        for (const char *name : {"con_songsdb", "con_mem"})
            QSqlDatabase::removeDatabase(QLatin1String(name));
    }

    static QString schema()
    {
        return "CREATE TABLE Songs(title varchar, artist varchar, genre varchar, author varchar, "
               "length integer, bpm integer, key varchar, filename varchar primary key, "
               "markers varchar, altartist varchar)"_s;
    }

    /** Makes a database by statements of which each must succeed; texts are bound, "?" by "?". */
    static void execute(const QString &path, const QStringList &statements,
                        const QStringList &texts = {})
    {
        {
            QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE"_s, "make"_s);
            database.setDatabaseName(path);
            QVERIFY(database.open() && database.transaction());
            QSqlQuery query(database);
            for (const QString &statement : statements)
                QVERIFY2(query.exec(statement), qPrintable(statement));
            query.prepare("insert into Songs values (?, '', '', '', 1, 1, '', ?, NULL, '')"_s);
            for (const QString &text : texts) {
                query.bindValue(0, text);
                query.bindValue(1, text);
                QVERIFY(query.exec());
            }
            QVERIFY(database.commit());
        }
        QSqlDatabase::removeDatabase("make"_s);
    }

    /** Makes the catalogue with the rows of the tests. */
    void makeCatalogue()
    {
        m_catalogue = m_folder.filePath("catalogue"_s);
        QStringList statements{schema()};
        for (const char *row :
             {"' Dodici anni ', ' Ada ', ' DANCE ', ' Berto ', 215, 120, ' A - ', '12ANNI', "
              "' 1;Intro;5;Verse 1; ', ' Bice '",
              "'Twice', 'first', 'BLUES', 'x', 100, 90, 'C', 'TWICE_1', NULL, 'a'",
              "'Twice', 'second', '', 'x', 100, 90, 'C', 'TWICE_2', NULL, 'b'",
              "'Odd', 'x', 'BLUES', 'x', 'unknown', '', '', 'ODD', '1;Intro;x;Bad;7;Verse;', 'a'",
              "'Nulls', NULL, NULL, NULL, NULL, NULL, NULL, 'NULLS', NULL, NULL",
              "'TITLE', 'x', 'x', 'x', 1, 1, '', 'FILENAME', NULL, 'a'",
              "'Large', 'x', 'x', 'x', 4294967301, 1e300, '', 'LARGE', "
              "'70000;Far;99999999999;Nowhere;', 'a'",
              "'Half', 'x', 'x', 'x', 1, 1, '', 'HALF', '1;Intro;5', 'a'",
              "'Bars', 'x', 'x', 'x', 1, 1, '', 'BARS', '0;Zero;-1;Minus;;;9;Nine;', 'a'",
              "'Blanks', 'x', 'x', 'x', 1, 1, '', 'BLANKS', '3; Bridge ;5;Fine ', 'a'",
              "'Perch\u00e9', 'x', 'x', 'x', 1, 1, '', 'ACCENT', NULL, 'a'"})
            statements.append("insert into Songs values (%1)"_s.arg(QString::fromUtf8(row)));
        execute(m_catalogue, statements);
    }

    QTemporaryDir m_folder;
    QString m_catalogue;
    std::unique_ptr<Database> m_database = std::make_unique<Database>();
};

} // namespace tarvel4
