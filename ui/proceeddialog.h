#pragma once

#include <QDialog>
#include <QStringList>

#include <memory>

namespace tarvel4 {

namespace Ui {
class ProceedDialog;
}

/** Sums up an import and asks whether to synchronise now. Results of exec(): 1 yes, 0 no or closed.
 */
class ProceedDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ProceedDialog(QWidget *parent = nullptr);
    ~ProceedDialog() override;

    /** \a songs were recognised, \a makerSongs of them published by the maker, \a unknown files
     * were no songs. */
    void setSummary(int songs, int makerSongs, int unknown);
    /** The files that could not be read, one line each, "name: cause": shown when they are asked
     * for. */
    void setProblems(const QStringList &problems);
    /** False when the user wants no more messages about the copyright. */
    bool showAgain() const;

private Q_SLOTS:
    void on_yesPushButton_clicked();
    void on_noPushButton_clicked();

private:
    std::unique_ptr<Ui::ProceedDialog> ui;
};

} // namespace tarvel4
