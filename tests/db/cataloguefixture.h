#pragma once

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

namespace CatalogueFixture {

inline QString schema()
{
    return QStringLiteral(
        "CREATE TABLE Songs(title varchar, artist varchar, genre varchar, author varchar, length "
        "integer, bpm integer, key varchar, filename varchar primary key, markers varchar, "
        "altartist "
        "varchar)");
}

/** Makes a catalogue with the rows of the tests. */
inline void make(const QString &path)
{
    {
        QSqlDatabase database =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("make"));
        database.setDatabaseName(path);
        QVERIFY(database.open());
        QSqlQuery query(database);
        for (const QString &statement :
             {schema(),
              QStringLiteral("insert into Songs values (' Dodici anni ', ' Ada ', ' DANCE ', ' "
                             "Berto ', 215, 120, "
                             "' A - ', '12ANNI', ' 1;Intro;5;Verse 1; ', ' Bice ')"),
              QStringLiteral("insert into Songs values ('Twice', 'first', 'BLUES', 'x', 100, 90, "
                             "'C', 'TWICE_1', NULL, 'a')"),
              QStringLiteral("insert into Songs values ('Twice', 'second', '', 'x', 100, 90, 'C', "
                             "'TWICE_2', NULL, 'b')"),
              QStringLiteral(
                  "insert into Songs values ('Odd', 'x', 'BLUES', 'x', 'unknown', '', '', 'ODD', "
                  "'1;Intro;x;Bad;7;Verse;', 'a')"),
              QStringLiteral("insert into Songs values ('Nulls', NULL, NULL, NULL, NULL, NULL, "
                             "NULL, 'NULLS', NULL, NULL)"),
              QStringLiteral("insert into Songs values ('TITLE', 'x', 'x', 'x', 1, 1, '', "
                             "'FILENAME', NULL, 'a')"),
              QStringLiteral("insert into Songs values ('Large', 'x', 'x', 'x', 4294967301, "
                             "1e300, '', 'LARGE', '70000;Far;99999999999;Nowhere;', 'a')"),
              QStringLiteral("insert into Songs values ('Half', 'x', 'x', 'x', 1, 1, '', 'HALF', "
                             "'1;Intro;5', 'a')"),
              QStringLiteral("insert into Songs values ('Bars', 'x', 'x', 'x', 1, 1, '', 'BARS', "
                             "'0;Zero;-1;Minus;;;9;Nine;', 'a')"),
              QStringLiteral(
                  "insert into Songs values ('Blanks', 'x', 'x', 'x', 1, 1, '', 'BLANKS', "
                  "'3; Bridge ;5;Fine ', 'a')"),
              QStringLiteral("insert into Songs values ('Perch\u00e9', 'x', 'x', 'x', 1, 1, '', "
                             "'ACCENT', NULL, 'a')")})
            QVERIFY2(query.exec(statement), qPrintable(statement));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("make"));
}

} // namespace CatalogueFixture

} // namespace tarvel4
