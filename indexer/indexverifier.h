#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QHash>
#include <QString>
#include <QVector>

namespace tarvel4 {

/** One disagreement between an index file and the layout, the other files or the memory. */
struct IndexProblem
{
    QString file;
    int record = -1; ///< 0-based; -1 when the whole file, or no record at all, is meant
    QString problem;
};

/**
 * Checks a prepared memory by the rules of its layout, never by building again, so that it can
 * catch a fault of the builder; docs/formats.md, Player memory. It sees what the files can hold:
 * numbers and counts cut to 16 bits where the layout cuts them, names and texts as ISO 8859-1.
 */
class IndexVerifier
{
    Q_DECLARE_TR_FUNCTIONS(IndexVerifier)

public:
    explicit IndexVerifier(const QString &root);

    /** All disagreements, file by file; empty for a true memory. Changes nothing. */
    QVector<IndexProblem> verify();

private:
    /** One record of the path index, and what is known of the song that it stands for. */
    struct Song
    {
        QString path; ///< as the record holds it
        QByteArray stamp; ///< digits of date and time
        QByteArray sortKey; ///< of the song's own path where it was found, else of the record's
    };

    void checkPathIndex();
    void checkSongs();
    void checkOrdIndex();
    void checkTitleIndex();
    void checkArtistIndex();
    void checkGroup(int header, int previousCount, int count);
    void checkGroupSongs(int header, int count, QHash<QByteArray, int> &titles,
                         QVector<bool> &used);
    void checkAlphaIndex(const QString &file, const QByteArray &records, bool groupsOnly);
    void checkNumfileIndex();

    QByteArray read(const QString &file, int recordSize, qint64 largestSize);
    void checkText(const QString &file, int record, const QByteArray &field);
    void checkStoredText(const QString &file, int record, const QByteArray &bytes);
    void takeNumber(const QString &file, int record, quint32 number, QVector<bool> &used);
    void reportUnused(const QString &file, const QVector<bool> &used);
    void report(const QString &file, int record, const QString &problem);

    QString m_root;
    QVector<IndexProblem> m_problems;
    QVector<Song> m_songs;
    QByteArray m_titles; ///< "title.id3"
    QByteArray m_artists; ///< "artist.id3"
    int m_groups = 0;
};

} // namespace tarvel4
