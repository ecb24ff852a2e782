#pragma once

#include "library/editjob.h"
#include "songs/fieldcheck.h"
#include "songs/songinfo.h"

#include <QDialog>
#include <QVector>

#include <functional>

QT_BEGIN_NAMESPACE
class QAbstractButton;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QTableWidget;
QT_END_NAMESPACE

namespace tarvel4 {

class FieldNotes;

/** Lets the user choose several songs, and which of genre, artist and author they all get. The
 * choice is made in a list of its own, so that the window's table stays with one row. */
class EditManyDialog : public QDialog
{
    Q_OBJECT

public:
    EditManyDialog(const QStringList &genres, const QStringList &artists,
                   QWidget *parent = nullptr);

    /** What a song is known by. */
    struct Song
    {
        QString title, artist, fileName;
    };
    /** In the order of the window's table. */
    void setSongs(const QVector<Song> &songs);
    /** Numbers of songs, in their order. */
    void choose(const QVector<int> &songs);
    QVector<int> chosen() const;

    /** What is to be said of the choice and the texts as they are now; asked at each change. */
    void setCheck(std::function<QVector<FieldNote>()> check);

    /** Which fields all of them get; never the title. */
    ApplyToAll fields() const;
    /** The texts for these fields, without the blanks around them. */
    SongInfo values() const;

private:
    void setUpList();
    QLayout *fieldForm(const QStringList &genres, const QStringList &artists);
    QLayout *noteLine();
    QComboBox *addList(QGridLayout &form, const QString &key, QCheckBox *&tick, const QString &name,
                       const QStringList &entries);
    void addField(QGridLayout &form, const QString &key, QCheckBox *&tick, const QString &name,
                  QWidget *field);
    void showChoice();
    void showNotes();

    QTableWidget *m_songs;
    QLabel *m_count;
    QPushButton *m_apply;
    QCheckBox *m_hasGenre = nullptr;
    QCheckBox *m_hasArtist = nullptr;
    QCheckBox *m_hasAuthor = nullptr;
    QComboBox *m_genre;
    QComboBox *m_artist;
    QLineEdit *m_author;
    FieldNotes *m_notes = nullptr;
    std::function<QVector<FieldNote>()> m_check;
};

} // namespace tarvel4
