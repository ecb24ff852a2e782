#include "tests/program/fixtures.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QtEndian>

#include <algorithm>
#include <array>

namespace tarvel4 {

QByteArray Fixtures::meta(int type, const QByteArray &payload)
{
    QByteArray event("\0\xFF", 2);
    event += static_cast<char>(type);
    event += static_cast<char>(payload.size());
    return event + payload;
}

QByteArray Fixtures::songInfo(int subType, const QByteArray &payload)
{
    return meta(0x4B, static_cast<char>(subType) + payload);
}

QByteArray Fixtures::midi(const QByteArray &events)
{
    const QByteArray track = events
        + QByteArray::fromHex("00 90 3C 40"
                              "60 80 3C 40"
                              "00 FF 2F 00");
    QByteArray length(4, '\0');
    qToBigEndian(static_cast<quint32>(track.size()), length.data());
    return "MThd" + QByteArray::fromHex("00000006 0000 0001 0060") + "MTrk" + length + track;
}

QByteArray Fixtures::wholeSong()
{
    return midi(songInfo(6, QByteArray("\0\1Intro", 7)) + songInfo(6, QByteArray("\0\5Strofa", 8))
                + meta(0x03, "Bella Ciao") + meta(0x02, "(c) 2009 K-Varo")
                + meta(0x59, QByteArray("\xFF\1", 2)) + songInfo(1, "FOLK") + songInfo(2, "Anonimo")
                + songInfo(3, "Tradizionale") + songInfo(4, "185") + songInfo(5, "120"));
}

QByteArray Fixtures::wholeRecord(const QByteArray &name)
{
    return R"("name":")" + name
        + R"(","format":"MIDI","title":"Bella Ciao","artist":"Anonimo","genre":"FOLK",)"
          R"("author":"Tradizionale","length":185,"bpm":120,"key":"D-","publisher":true,)"
          R"("markers":[{"bar":1,"text":"Intro"},{"bar":5,"text":"Strofa"}])";
}

bool Fixtures::write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray Fixtures::read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("can't be opened");
}

bool Fixtures::writeCatalogue(const QString &path)
{
    const std::array<const char *, 5> statements{
        "CREATE TABLE Songs(title varchar, artist varchar, genre varchar, author varchar, length "
        "integer, bpm integer, key varchar, filename varchar primary key, markers varchar, "
        "altartist varchar)",
        "INSERT INTO Songs VALUES('Azzurro Cielo','Primo','DANCE','Rossi',200,128,'A -','AZZURRO',"
        "'1;Intro;9;Fine;','Secondo')",
        "INSERT INTO Songs VALUES('Doppia','Terzo','','Bianchi','x',NULL,'','DOPPIA1',NULL,"
        "'Quarto')",
        "INSERT INTO Songs VALUES('Doppia','Quinto','DANCE','Verdi',100,90,'C','DOPPIA2','',"
        "'Quarto')",
        "INSERT INTO Songs VALUES('CITTÀ','Sesto','DANCE','Neri',0,0,'C','ZERI','','Quarto')"};
    bool written = false;
    {
        QSqlDatabase database =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("fixture"));
        database.setDatabaseName(path);
        QSqlQuery query(database.open() ? database : QSqlDatabase());
        written = std::all_of(statements.begin(), statements.end(), [&query](const char *text) {
            return query.exec(QString::fromUtf8(text));
        });
    }
    QSqlDatabase::removeDatabase(QStringLiteral("fixture"));
    return written;
}

} // namespace tarvel4
