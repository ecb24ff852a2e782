#pragma once

#include <QStringList>

namespace tarvel4 {

/** What an import found. */
struct ImportSummary
{
    bool isDone = false; ///< false: nothing was imported, or not all of a folder
    int found = 0; ///< files read as songs
    int unknown = 0; ///< files that could not be read
    int published = 0; ///< songs published by the maker
    QStringList problems; ///< one line for each unknown file, "name: cause"
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

/** What a job may ask: the window answers with dialogs, the command line with the terminal, a test
 * with a script. */
class Questions
{
public:
    virtual ~Questions() = default;

    virtual Answer askNotPublished(const QString &fileName) = 0;
    /** Both are paths, and both files are there. */
    virtual Answer askOverwrite(const QString &source, const QString &destination) = 0;
    virtual BackupChoice askBackup() = 0;
    virtual ProceedChoice askProceed(const ImportSummary &summary) = 0;
};

} // namespace tarvel4
