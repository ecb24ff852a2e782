#pragma once

#include "ui/readerpace.h"

#include <QDialog>

#include <memory>

namespace tarvel4 {

class Index;

namespace Ui {
class SongsListDialog;
}

/** Saves the songs of a prepared memory as a semicolon-separated list. */
class SongsListDialog : public QDialog
{
    Q_OBJECT

public:
    explicit SongsListDialog(QWidget *parent = nullptr);
    ~SongsListDialog() override;

public Q_SLOTS:
    void browseDir();
    void browseFile();
    void start();
    void initProgress(int maximum);
    void setProgressValue(int value);

private:
    bool mayReplace(const QString &target);
    int writeList(Index &index, const QString &source, const QString &target);

    std::unique_ptr<Ui::SongsListDialog> ui;
    ReaderPace m_pace;
    QString m_confirmedTarget; ///< that the user has just chosen to replace
};

} // namespace tarvel4
