#pragma once

#include "db/database.h"
#include "db/usersongsreltablemodel.h"
#include "tests/storage/textliteral.h"

#include <QtTest>

#include <memory>

namespace tarvel4 {

/** The window's table model on an empty table. */
class UserSongsFixture
{
protected:
    void openTable()
    {
        m_database = std::make_unique<Database>();
        m_database->init("/nowhere"_s); // the catalogue is not needed here
        QVERIFY(m_database->userSongsDatabase().isOpen());
        m_model =
            std::make_unique<UserSongsRelTableModel>(nullptr, m_database->userSongsDatabase());
        m_model->setHeaders();
    }

    void closeTable()
    {
        m_model.reset();
        m_database.reset();
        for (const char *name : {"con_songsdb", "con_mem"})
            QSqlDatabase::removeDatabase(QLatin1String(name));
    }

    static SongInfo song(const QString &name, int length = 185, int bpm = 120)
    {
        SongInfo info;
        info.format = "MIDI"_s;
        info.title = name;
        info.artist = "artist"_s;
        info.genre = "genre"_s;
        info.author = "author"_s;
        info.length = length;
        info.bpm = bpm;
        info.key = "A-"_s;
        info.filename = "/songs/"_s + name;
        info.shortname = name;
        return info;
    }

    void append(const char *names)
    {
        for (const QString &name : words(names))
            QVERIFY(m_model->appendSong(song(name)));
    }
    QString textOf(int row)
    {
        QStringList cells;
        for (int column = 0; column < m_model->columnCount(); ++column)
            cells.append(m_model->cellIndex(row, column).data().toString());
        return cells.join(QLatin1Char('|'));
    }
    QString cell(int row, const char *field)
    {
        return m_model->cellIndex(row, m_model->fieldIndex(QLatin1String(field))).data().toString();
    }

    std::unique_ptr<Database> m_database;
    std::unique_ptr<UserSongsRelTableModel> m_model;
};

} // namespace tarvel4
