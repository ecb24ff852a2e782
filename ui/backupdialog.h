#pragma once

#include <QDialog>

#include <functional>
#include <memory>

namespace tarvel4 {

namespace Ui {
class BackupDialog;
}

/**
 * Offers a backup before the user's files are rewritten. Results of exec(): 0 cancel (closing
 * included), 1 back up into backupDir(), 2 go on without.
 */
class BackupDialog : public QDialog
{
    Q_OBJECT

public:
    explicit BackupDialog(QWidget *parent = nullptr);
    ~BackupDialog() override;

    /** The chosen folder; empty until one is chosen. */
    QString backupDir() const { return m_backupDir; }

    /** Offers a look at what would be changed; \a show leaves the question open. */
    void setPreview(std::function<void()> show);

private Q_SLOTS:
    void on_browsePushButton_clicked();
    void on_abortPushButton_clicked();
    void on_doBackupPushButton_clicked();
    void on_exitPushButton_clicked();

private:
    std::unique_ptr<Ui::BackupDialog> ui;
    QString m_backupDir;
};

} // namespace tarvel4
