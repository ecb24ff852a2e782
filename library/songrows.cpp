#include "library/songrows.h"

#include "db/database.h"
#include "db/usersongsreltablemodel.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QMultiHash>

namespace tarvel4 {

namespace {

class Texts
{
    Q_DECLARE_TR_FUNCTIONS(SongRows)
};

/** Why a song is as it was. */
QString reason(SongResult result, const Outcome &cause)
{
    switch (result) {
    case SongResult::NotFound:
        return Texts::tr("non è nel catalogo");
    case SongResult::Refused:
        return Texts::tr("non è stata pubblicata da K-Varo, lasciata com'era");
    default:
        return cause.sentence();
    }
}

/** Marks a row with how its song ended: a failure and an answer with their reason put into \a text,
 * a source text, all else with \a done. */
void mark(UserSongsRelTableModel &model, int row, const SongOutcome &song,
          UserSongsRelTableModel::Mark done, const char *text)
{
    const bool isLeftAlone =
        song.result == SongResult::NotFound || song.result == SongResult::Refused;
    if (!song.isFailure() && !isLeftAlone)
        return model.setMark(row, done);
    model.setMark(row,
                  isLeftAlone ? UserSongsRelTableModel::MarkedLeftAlone
                              : UserSongsRelTableModel::MarkedFailed,
                  [text, result = song.result, cause = song.cause] {
                      return Texts::tr(text).arg(reason(result, cause));
                  });
}

} // namespace

QStringList SongRows::paths(UserSongsRelTableModel &model)
{
    QStringList paths;
    const int rows = model.totalRows();
    paths.reserve(rows);
    for (int row = 0; row < rows; ++row)
        paths += model.fileNameOf(row);
    return paths;
}

bool SongRows::clear(Database &db, UserSongsRelTableModel &model)
{
    if (model.totalRows() == 0)
        return true;
    if (!db.clearUserSongs())
        return false;
    model.select();
    return true;
}

SongObserver SongRows::imported(UserSongsRelTableModel &model)
{
    return [&model](const SongOutcome &song) {
        if (!song.isFailure() && !model.appendSong(song.after))
            qDebug() << "[importUserLibrary] WARNING: no row for" << song.path;
    };
}

SongObserver SongRows::updated(UserSongsRelTableModel &model)
{
    return [&model, row = 0](const SongOutcome &song) mutable {
        const bool isUpdated = song.result == SongResult::Updated;
        if (isUpdated)
            model.updateSong(row, song.after);
        model.setStatus(
            row, isUpdated ? UserSongsRelTableModel::Updated : UserSongsRelTableModel::Failed);
        mark(model, row, song,
             song.isComplete() ? UserSongsRelTableModel::MarkedComplete
                               : UserSongsRelTableModel::MarkedUpdated,
             QT_TRANSLATE_NOOP("SongRows", "Non aggiornata: %1"));
        ++row;
    };
}

SongObserver SongRows::edited(UserSongsRelTableModel &model, int leftOut)
{
    return [&model, leftOut, row = 0](const SongOutcome &song) mutable {
        row += row == leftOut ? 1 : 0;
        showEdit(model, row++, song);
    };
}

SongObserver SongRows::restored(UserSongsRelTableModel &model)
{
    QMultiHash<QString, int> rows;
    const QStringList listed = paths(model);
    for (int row = 0; row < listed.size(); ++row)
        rows.insert(QDir::cleanPath(listed.at(row)), row);
    return [&model, rows](const SongOutcome &song) {
        for (const int row : rows.values(song.path)) {
            if (!song.isFailure())
                model.updateSong(row, song.after);
            model.setStatus(row,
                            song.isFailure() ? UserSongsRelTableModel::Failed
                                             : UserSongsRelTableModel::Listed);
            mark(model, row, song, UserSongsRelTableModel::Unmarked,
                 QT_TRANSLATE_NOOP("SongRows", "Non rimessa com'era: %1"));
        }
    };
}

void SongRows::showEdit(UserSongsRelTableModel &model, int row, const SongOutcome &song)
{
    if (song.result == SongResult::Unreadable) {
        mark(model, row, song, UserSongsRelTableModel::Unmarked,
             QT_TRANSLATE_NOOP("SongRows", "Non letta: %1"));
        return;
    }
    model.updateSong(row, song.after);
    // required: a row counts as edited whatever became of its save
    model.setStatus(row, UserSongsRelTableModel::Edited);
    mark(model, row, song, UserSongsRelTableModel::MarkedEdited,
         QT_TRANSLATE_NOOP("SongRows", "Non salvata: %1"));
}

} // namespace tarvel4
