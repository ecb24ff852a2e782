#pragma once

#include "cli/progressline.h"
#include "library/messages.h"
#include "library/progress.h"
#include "library/questions.h"

#include <functional>

namespace tarvel4 {

/**
 * Answers the workflows from the terminal: questions and messages on standard error, progress as a
 * line of it, answers given beforehand by options.
 */
class TerminalHost : public Progress, public Questions, public Messages
{
public:
    /** What becomes of a file whose name exists at the destination. */
    enum class Overwrite {
        Ask,
        Yes,
        No,
        Never ///< the job fails
    };

    explicit TerminalHost(bool quiet);

    /** True when there is somebody to ask. */
    static bool canAsk();

    /** True where each file is to be told of. */
    bool isVerbose() const { return m_verbose; }
    void setVerbose(bool verbose) { m_verbose = verbose; }
    void setOverwrite(Overwrite overwrite) { m_overwrite = overwrite; }
    void setBackup(const BackupChoice &choice) { m_backup = choice; }
    /** Another reason to stop before the next song. */
    void setStopWhen(std::function<bool()> stop) { m_stopWhen = std::move(stop); }

    /** True after a name that existed although it must not. */
    bool hasNameClash() const { return m_hasNameClash; }

    /** A line on standard error, ahead of which the program's name stands. */
    void say(const QString &text);
    /** Clears the progress line, for output that shares its terminal. */
    void hideProgress() { m_progress.hide(); }

    void beginProgress(const ProgressTexts &texts, int maximum) override;
    void setProgressMaximum(int maximum) override;
    void setProgress(int value) override;
    void processPendingEvents() override {}
    void endProgress() override;
    bool wasCancelled() const override;

    void recovered(const QString &path, Recovery::Result result, const Outcome &cause) override;

    Answer askNotPublished(const QString &fileName) override;
    Answer askOverwrite(const QString &source, const QString &destination) override;
    BackupChoice askBackup() override { return m_backup; }
    ProceedChoice askProceed(const ImportSummary &summary) override;

    void information(const QString &title, const QString &text,
                     const QStringList &details) override;
    /** These leave out the details: each command says what failed, by the path as it was given. */
    void warning(const QString &title, const QString &text, const QStringList &details) override;
    void critical(const QString &title, const QString &text, const QStringList &details) override;

private:
    Answer ask(const QString &question);

    bool m_quiet;
    bool m_verbose = false;
    ProgressLine m_progress;
    Overwrite m_overwrite = Overwrite::No;
    BackupChoice m_backup;
    std::function<bool()> m_stopWhen;
    bool m_hasNameClash = false;
};

} // namespace tarvel4
