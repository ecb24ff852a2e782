#pragma once

#include "ui/diskcheck.h"
#include "ui/readerpace.h"

#include <QDialog>
#include <QElapsedTimer>

#include <memory>

namespace tarvel4 {

namespace Ui {
class IndexDialog;
}
struct IndexSummary;

/** Prepares a memory for the player: checks it on demand, updates or rebuilds its index and
 * reports. */
class IndexDialog : public QDialog
{
    Q_OBJECT

public:
    explicit IndexDialog(QWidget *parent = nullptr, const DiskCheckTimings &timings = {});
    ~IndexDialog() override;

    /** Does nothing while a run is under way. */
    void reject() override;

public Q_SLOTS:
    void browseDir();
    void updateLabelNum(int count);
    void initProgress(int maximum);
    void setProgressValue(int value);
    void updateLabelCurrPath(const QString &path);
    void errorFromIndexReceived(const QString &text);

private Q_SLOTS:
    void on_startPushButton_clicked();

private:
    void run(const QString &path);
    bool passesDiskCheck(const QString &path);
    IndexSummary buildIndex(const QString &root);
    void reportOutcome(const IndexSummary &index);
    void setRunning(bool running);
    void clearReport();
    void fillProgress();
    void paintNow();

    std::unique_ptr<Ui::IndexDialog> ui;
    DiskCheckTimings m_timings;
    int m_errors = 0; ///< reported by the index in the current run
    bool m_running = false;
    int m_found = 0;
    QString m_currentPath;
    ReaderPace m_foundPace;
    ReaderPace m_progressPace;
    ReaderPace m_pathPace;
    QElapsedTimer m_lastPaint;
};

} // namespace tarvel4
