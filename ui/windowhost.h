#pragma once

#include "library/messages.h"
#include "library/progress.h"
#include "library/questions.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QScopeGuard>

#include <functional>
#include <memory>
#include <utility>

namespace tarvel4 {

class JobReport;
class Journal;
class NoCopyrightDialog;
class ProgressDialog;

/** The window's side of a workflow: its progress, its questions and its messages, as dialogs. */
class WindowHost : public Progress, public Questions, public Messages
{
    Q_DECLARE_TR_FUNCTIONS(WindowHost)

public:
    explicit WindowHost(QWidget *window);
    ~WindowHost() override;

    /** True while a workflow's progress is on show. */
    bool isRunning() const { return m_progressDialog != nullptr; }
    /** The program is to end: from now on a workflow is cancelled, and no song of it changed. */
    void stop() { m_stopped = true; }

    /** Called when something begins that reads or writes songs. */
    void setJobBegins(std::function<void()> begins) { m_jobBegins = std::move(begins); }

    void beginProgress(const ProgressTexts &texts, int maximum) override;
    void setProgressMaximum(int maximum) override;
    void setProgress(int value) override;
    void setProgressValue(int value) override;
    void processPendingEvents() override;
    void endProgress() override;
    bool wasCancelled() const override;

    Answer askNotPublished(const QString &fileName) override;
    Answer askOverwrite(const QString &source, const QString &destination) override;
    BackupChoice askBackup() override;
    ProceedChoice askProceed(const ImportSummary &summary) override;

    void information(const QString &title, const QString &text,
                     const QStringList &details) override;
    void warning(const QString &title, const QString &text, const QStringList &details) override;
    void critical(const QString &title, const QString &text, const QStringList &details) override;

    /** \a take gets the report of each job that ended. */
    void setReportTaker(std::function<void(const JobReport &)> take)
    {
        m_takeReport = std::move(take);
    }
    /** Hands on what a job did; shows nothing that asks for an answer. */
    void report(const JobReport &report) const;

    /** Shows a preview over the question about the backup, which then offers it. */
    void setPreview(std::function<void(QWidget &question)> show) { m_preview = std::move(show); }

    /** Does \a job, whose progress lies over \a parent in place of the window; its result. */
    template <class Job> auto over(QWidget &parent, Job job)
    {
        const auto back =
            qScopeGuard([this, window = std::exchange(m_window, &parent)] { m_window = window; });
        return job();
    }
    /** Shows a message, with a button beside Ok where that has a text; true when it was pressed. */
    bool offer(QMessageBox::Icon icon, const QString &title, const QString &text,
               const QStringList &details, const QString &button);

    /** Puts in order what was cut short, also what waits beside \a files, and tells it; the first
     * step of everything that reads or writes songs. */
    void finishSaves(Journal &journal, const QStringList &files = {});
    /** Kept for tellNotices(). */
    void recovered(const QString &path, Recovery::Result result, const Outcome &cause) override;
    /** Keeps a sentence about the journal of changes for tellNotices(). */
    void addJournalNotice(const QString &sentence) { m_journalNotices += sentence; }
    /** Tells what was kept, once, and is true where there was something; to be called where no job
     * runs. */
    bool tellNotices();

private:
    bool tellRecovered();
    QWidget *dialogParent() const;
    Answer ask(NoCopyrightDialog &dialog);

    QWidget *m_window;
    std::unique_ptr<ProgressDialog> m_progressDialog;
    std::function<void(const JobReport &)> m_takeReport;
    std::function<void(QWidget &)> m_preview;
    std::function<void()> m_jobBegins = [] {};
    bool m_stopped = false;
    QStringList m_putRight; ///< of songs whose save was cut short: a sentence each
    QStringList m_waiting;
    QStringList m_left;
    QStringList m_journalNotices;
};

} // namespace tarvel4
