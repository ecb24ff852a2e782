#pragma once

#include <QString>
#include <QVector>

namespace tarvel4 {

/** One row of the table Songs, in the order of its columns. */
struct CatalogueRow
{
    QString title;
    QString artist;
    QString genre;
    QString author;
    int length; ///< seconds
    int bpm;
    QString key;
    QString filename;
    QString markers; ///< null: the column is NULL
    QString altArtist;
};

/**
 * The rows of the built-in catalogue: the songs of samples/ and as many invented ones as a real
 * catalogue has. The same rows at each call.
 */
QVector<CatalogueRow> makeCatalogueRows();

} // namespace tarvel4
