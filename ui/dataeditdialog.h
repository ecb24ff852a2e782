#pragma once

#include "songs/fieldcheck.h"
#include "songs/songinfo.h"

#include <QDialog>

#include <functional>
#include <memory>

QT_BEGIN_NAMESPACE
class QCheckBox;
class QPushButton;
QT_END_NAMESPACE

namespace tarvel4 {

namespace Ui {
class DataEditDialog;
}
class FieldNotes;

/**
 * Lets the user correct one song's data and say which fields every song of the list shall get;
 * writes to no file and no table. Fill the lists before setSong(). Results of exec(): 1 save, 0
 * cancel or closed.
 */
class DataEditDialog : public QDialog
{
    Q_OBJECT

public:
    explicit DataEditDialog(QWidget *parent = nullptr);
    ~DataEditDialog() override;

    QSize sizeHint() const override;

    void setArtists(const QStringList &artists);
    void setGenres(const QStringList &genres);
    /** The box starts with one empty entry before \a keys. */
    void setKeys(const QStringList &keys);

    void setSong(const SongInfo &song);
    /** Writes the edited fields into \a song, leaves its others as they are. */
    void getSong(SongInfo &song) const;

    /** After setSong(): has \a check asked, with every letter, what is to be said of the song as
     * typed. */
    void setCheck(std::function<QVector<FieldNote>(const SongInfo &)> check);
    /** Whether there is a song to go to before and after this one. */
    void setNeighbours(bool hasPrevious, bool hasNext);

    /** True when what would be saved is not what setSong() showed. */
    bool isChanged() const;
    /** Unticks what is to be applied to all; the fields stay as typed. */
    void clearApplyToAll();

    bool applyToAllAuthor() const { return m_applyToAllAuthor; }
    bool applyToAllArtist() const { return m_applyToAllArtist; }
    bool applyToAllGenre() const { return m_applyToAllGenre; }
    bool applyToAllTitle() const { return m_applyToAllTitle; }

Q_SIGNALS:
    /** The user wants to go on with the song before this one (-1) or after it (1). */
    void stepRequested(int direction);

protected:
    void showEvent(QShowEvent *event) override;

private Q_SLOTS:
    void on_previousPushButton_clicked();
    void on_nextPushButton_clicked();
    void on_savePushButton_clicked();
    void on_exitPushButton_clicked();
    void on_checkBoxToAllAuthor_clicked();
    void on_checkBoxToAllArtist_clicked();
    void on_checkBoxToAllGenre_clicked();
    void on_checkBoxToAllTitle_clicked();
    void on_radioButtonTitle1_clicked();
    void on_radioButtonTitle2_clicked();

private:
    void addStep(QPushButton *button, const QString &tip, const char *keys);
    void showNotes();
    SongInfo edited() const;
    bool confirmedForAll(QCheckBox *box, const QString &question);

    std::unique_ptr<Ui::DataEditDialog> ui;
    SongInfo m_song;
    SongInfo m_shown; ///< what would be saved of it as it was shown first
    FieldNotes *m_notes;
    std::function<QVector<FieldNote>(const SongInfo &)> m_check;
    bool m_applyToAllAuthor = false;
    bool m_applyToAllArtist = false;
    bool m_applyToAllGenre = false;
    bool m_applyToAllTitle = false;
};

} // namespace tarvel4
