#pragma once

#include <QFrame>

#include <functional>

QT_BEGIN_NAMESPACE
class QLabel;
class QMenu;
class QPushButton;
QT_END_NAMESPACE

namespace tarvel4 {

class ElidedLabel;
struct SongSound;

/** The strip under the song table that shows which song is heard, how far it is and at which
 * marker; it is on show as long as there is one. */
class ListenStrip : public QFrame
{
    Q_OBJECT

public:
    explicit ListenStrip(QWidget *parent = nullptr);

    void showSong(const SongSound &song);
    void showPosition(const SongSound &song, qint64 ms);

    /** Puts an entry into a menu for each marker, which hands its number to \a chosen. */
    static void addMarks(QMenu &menu, const SongSound &song,
                         const std::function<void(int mark)> &chosen);

Q_SIGNALS:
    void stopAsked();
    void markAsked(int mark);

protected:
    void changeEvent(QEvent *event) override;

private:
    void setTexts();

    ElidedLabel *m_title;
    QLabel *m_time;
    ElidedLabel *m_mark;
    QPushButton *m_marks;
    QPushButton *m_stop;
    QString m_song; ///< its title
    int m_shownMark = -1;
};

} // namespace tarvel4
