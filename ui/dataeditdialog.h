#pragma once

#include "songs/songinfo.h"

#include <QDialog>

#include <memory>

QT_BEGIN_NAMESPACE
class QCheckBox;
QT_END_NAMESPACE

namespace tarvel4 {

namespace Ui {
class DataEditDialog;
}

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

    void setArtists(const QStringList &artists);
    void setGenres(const QStringList &genres);
    /** The box starts with one empty entry before \a keys. */
    void setKeys(const QStringList &keys);

    void setSong(const SongInfo &song);
    /** Writes the edited fields into \a song, leaves its others as they are. */
    void getSong(SongInfo &song) const;

    bool applyToAllAuthor() const { return m_applyToAllAuthor; }
    bool applyToAllArtist() const { return m_applyToAllArtist; }
    bool applyToAllGenre() const { return m_applyToAllGenre; }
    bool applyToAllTitle() const { return m_applyToAllTitle; }

private Q_SLOTS:
    void on_savePushButton_clicked();
    void on_exitPushButton_clicked();
    void on_checkBoxToAllAuthor_clicked();
    void on_checkBoxToAllArtist_clicked();
    void on_checkBoxToAllGenre_clicked();
    void on_checkBoxToAllTitle_clicked();
    void on_radioButtonTitle1_clicked();
    void on_radioButtonTitle2_clicked();

private:
    bool confirmedForAll(QCheckBox *box, const QString &question);

    std::unique_ptr<Ui::DataEditDialog> ui;
    SongInfo m_song;
    bool m_applyToAllAuthor = false;
    bool m_applyToAllArtist = false;
    bool m_applyToAllGenre = false;
    bool m_applyToAllTitle = false;
};

} // namespace tarvel4
