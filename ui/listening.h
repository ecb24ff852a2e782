#pragma once

#include "player/songplayers.h"

#include <QObject>
#include <QTimer>

#include <memory>

QT_BEGIN_NAMESPACE
class QAction;
class QMenu;
class QTableView;
QT_END_NAMESPACE

namespace tarvel4 {

class ListenStrip;
class UserSongsRelTableModel;

/** Lets the songs of the table be heard, one at a time, from the start or from a marker. */
class Listening : public QObject
{
    Q_OBJECT

public:
    /** Adds its entries to the end of \a tools; all of them must outlive it. */
    Listening(QTableView &table, UserSongsRelTableModel &model, QMenu &tools, ListenStrip &strip,
              std::unique_ptr<SongPlayers> players);
    ~Listening() override;

    /** Adds what there is for a row to its menu: nothing where its song can't be heard here. */
    void addTo(QMenu &menu, int row);

    /** Says everything in the present language. */
    void retranslate() { setTexts(); }

    /** Ends what is heard: songs are about to be written. */
    void stop();
    /** The same where it is this song: its file is about to go. */
    void stop(const QString &path);

private:
    SongPlayer *playerOf(int row);
    void updateTools();
    void setTexts(bool isHeard = false);
    void addMarksOf(QMenu &menu, const QString &path);
    void toggle(int row);
    void play(const QString &path, int mark);
    void playMark(int mark);
    void ended(const QString &cause);
    void tell(const QString &path, const QString &cause);
    void stopWhereUnlisted();

    QTableView &m_table;
    UserSongsRelTableModel &m_model;
    ListenStrip &m_strip;
    std::unique_ptr<SongPlayers> m_players;
    QAction *m_listen;
    QMenu *m_fromMark;

    SongPlayer *m_player = nullptr; ///< of the song that is heard; null: none
    SongSound m_song; ///< the one that is heard
    SongSound m_offered; ///< the one whose markers a menu offers
    QTimer m_timer;
};

} // namespace tarvel4
