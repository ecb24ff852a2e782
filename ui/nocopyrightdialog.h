#pragma once

#include <QDialog>

#include <memory>

namespace tarvel4 {

namespace Ui {
class NoCopyrightDialog;
}

/**
 * Asks about one song, with four answers: whether to change a song that the maker did not publish,
 * or whether to overwrite one. Results of exec(): 0 yes, 1 yes to all, 2 no, 3 no to all; closing
 * gives 0, Escape 2.
 */
class NoCopyrightDialog : public QDialog
{
    Q_OBJECT

public:
    explicit NoCopyrightDialog(QWidget *parent = nullptr);
    ~NoCopyrightDialog() override;

    void setFileName(const QString &name);
    /** Shows the size and the date of a file and of the one whose place it would take. */
    void compare(const QString &source, const QString &destination);
    /** Replaces the question. */
    void setMessage(const QString &text);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private Q_SLOTS:
    void on_yesPushButton_clicked();
    void on_yesAllPushButton_clicked();
    void on_noPushButton_clicked();
    void on_noAllPushButton_clicked();

private:
    std::unique_ptr<Ui::NoCopyrightDialog> ui;
};

} // namespace tarvel4
