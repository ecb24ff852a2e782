#pragma once

#include "storage/recovery.h"

#include <QString>
#include <QStringList>

namespace tarvel4 {

/** The texts of a progress display. */
struct ProgressTexts
{
    QString title;
    QString label;
    QString cancel;
    bool closesAtMaximum = true; ///< the display goes away by itself when the maximum is reached
};

/** What an import found. */
struct ImportCounts
{
    int found = 0; ///< files read as songs
    int unknown = 0; ///< files that could not be read
    int published = 0; ///< songs published by the maker
};

/** Four answers, with the result codes of the dialog that asks. */
enum class Answer { Yes = 0, YesToAll = 1, No = 2, NoToAll = 3 };

/** What to do about a backup, with the result codes of the dialog that asks. */
struct BackupChoice
{
    enum Action { Cancel = 0, Backup = 1, ProceedWithout = 2 };
    Action action = Cancel;
    QString folder;
};

/** The answer to the summary of an import. */
struct ProceedChoice
{
    bool synchronise = false;
    bool showAgain = true;
};

/**
 * What a workflow needs from whoever runs it. The window answers with dialogs, the command line
 * with the terminal, a test with a script. The texts handed over are translated plain text.
 */
class WorkflowHost
{
public:
    virtual ~WorkflowHost() = default;

    /** Shows a progress display in place of the running one, if any. */
    virtual void beginProgress(const ProgressTexts &texts, int maximum) = 0;
    /** Changes the range of the running progress. */
    virtual void setProgressMaximum(int maximum) = 0;
    /** Shows the value and the label "%1 di %2"; lets pending events pass. */
    virtual void setProgress(int value) = 0;
    /** Shows the value and keeps the label; lets pending events pass. */
    virtual void setProgressValue(int value) { setProgress(value); }
    /** Lets pending events pass without moving the progress. */
    virtual void processPendingEvents() = 0;
    /** Takes the display away; harmless where there is none. */
    virtual void endProgress() = 0;
    virtual bool wasCancelled() const = 0;

    /** A file that a power cut had left aside was met before the job began. */
    virtual void recovered(const QString &path, Recovery::Result outcome)
    {
        Q_UNUSED(path)
        Q_UNUSED(outcome)
    }

    virtual Answer askNotPublished(const QString &fileName) = 0;
    virtual Answer askOverwrite(const QString &fileName) = 0;
    virtual BackupChoice askBackup() = 0;
    virtual ProceedChoice askProceed(const ImportCounts &counts) = 0;

    virtual void information(const QString &title, const QString &text) = 0;
    virtual void warning(const QString &title, const QString &text) = 0;
    /** \a details: what went wrong, one thing each. */
    virtual void critical(const QString &title, const QString &text,
                          const QStringList &details = {}) = 0;
};

} // namespace tarvel4
