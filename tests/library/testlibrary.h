#pragma once

#include "db/database.h"
#include "db/usersongsreltablemodel.h"
#include "library/importjob.h"
#include "library/songrows.h"

#include "tests/library/scriptedhost.h"
#include "tests/library/testfiles.h"

#include <QSqlQuery>
#include <QTemporaryDir>
#include <QVariant>
#include <QVector>

#include <memory>

namespace tarvel4 {

/** One row of a catalogue. */
struct CatalogueRow
{
    QString fileName;
    QString title;
    QString artist = QStringLiteral("CELENTANO");
    QString altArtist = QStringLiteral("ADRIANO CELENTANO");
    QString genre = QStringLiteral("POP");
    QString author = QStringLiteral("CONTE");
    QVariant length = 200;
    QVariant bpm = 120;
    QString key = QStringLiteral("A -");
    QVariant markers = QStringLiteral("1;Intro;5;Verse;");
};

/** A small library with a catalogue of its own: real files, real tables, a scripted host. */
class TestLibrary
{
public:
    explicit TestLibrary(const QVector<CatalogueRow> &rows)
    {
        writeCatalogue(rows);
        m_db = std::make_unique<Database>();
        if (!m_db->init(filePath("catalogue")))
            qFatal("no catalogue");
        m_model = std::make_unique<UserSongsRelTableModel>(nullptr, m_db->userSongsDatabase());
        m_model->setHeaders();
    }
    ~TestLibrary()
    {
        m_model.reset();
        m_db.reset();
        QSqlDatabase::removeDatabase(QStringLiteral("con_mem"));
        QSqlDatabase::removeDatabase(QStringLiteral("con_songsdb"));
    }
    Q_DISABLE_COPY(TestLibrary)

    Database &db() { return *m_db; }
    UserSongsRelTableModel &model() { return *m_model; }
    ScriptedHost &host() { return m_host; }
    QString filePath(const char *name) const { return m_dir.filePath(QString::fromUtf8(name)); }
    const QStringList &files() const { return m_files; }

    /** Writes a song; import() puts it into the table. */
    QString add(const QString &name, const QByteArray &bytes)
    {
        m_files.append(TestFiles::write(m_dir.filePath(QStringLiteral("songs/") + name), bytes));
        return m_files.last();
    }

    /** Imports into the table as the window does. */
    ImportSummary import(const QStringList &paths)
    {
        return ImportJob(m_host, SongRows::imported(*m_model)).run(paths, [this] {
            return SongRows::clear(*m_db, *m_model);
        });
    }

    /** Imports every song added; the host then knows nothing of it. */
    void import()
    {
        const ImportSummary summary = import(m_files);
        if (!summary.isDone || summary.unknown > 0)
            qFatal("the songs of the test are no songs");
        m_host.events.clear();
    }

    QString cell(int row, const char *column)
    {
        const int index = m_model->fieldIndex(QString::fromLatin1(column));
        return m_model->data(m_model->cellIndex(row, index)).toString();
    }

    QVector<int> statuses()
    {
        QVector<int> all;
        for (int row = 0; row < m_model->totalRows(); ++row)
            all.append(m_model->statusOf(row));
        return all;
    }

private:
    void writeCatalogue(const QVector<CatalogueRow> &rows)
    {
        const QString connection = QStringLiteral("test catalogue");
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
            db.setDatabaseName(filePath("catalogue"));
            db.open();
            QSqlQuery query(db);
            query.exec(QStringLiteral("PRAGMA synchronous = OFF"));
            db.transaction();
            query.exec(QStringLiteral(
                "CREATE TABLE Songs(title varchar, artist varchar, genre varchar, author varchar, "
                "length integer, bpm integer, key varchar, filename varchar primary key, markers "
                "varchar, altartist varchar)"));
            query.prepare(QStringLiteral("INSERT INTO Songs VALUES (?,?,?,?,?,?,?,?,?,?)"));
            for (const CatalogueRow &row : rows) {
                const QVariantList values{row.title,   row.artist,   row.genre, row.author,
                                          row.length,  row.bpm,      row.key,   row.fileName,
                                          row.markers, row.altArtist};
                for (int i = 0; i < values.size(); ++i)
                    query.bindValue(i, values.at(i));
                if (!query.exec())
                    qFatal("no catalogue row");
            }
            db.commit();
        }
        QSqlDatabase::removeDatabase(connection);
    }

    QTemporaryDir m_dir;
    std::unique_ptr<Database> m_db;
    std::unique_ptr<UserSongsRelTableModel> m_model;
    ScriptedHost m_host;
    QStringList m_files;
};

} // namespace tarvel4
