#pragma once

#include <QCoreApplication>
#include <QStringList>

#include <functional>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace tarvel4 {

class Journal;
class LibrarySteps;
class WindowHost;

/** The ways in which songs come in besides the dialog for files: a whole folder, and files and
 * folders that were dropped on the window or named when the program was started. */
class SongIntake
{
    Q_DECLARE_TR_FUNCTIONS(SongIntake)

public:
    /** All of them must outlive it. */
    SongIntake(QWidget &window, LibrarySteps &steps, WindowHost &host, Journal &journal);

    /** Asks for a folder and imports the songs below it; does nothing while a job runs. */
    void importFolder();
    /** Imports files and folders; \a unreachable is told like what can't be read below a folder.
     * Where they hold no song, the table stays as it is. */
    void import(const QStringList &paths, const QStringList &unreachable = {});

private:
    void finishSavesBelow(const QStringList &paths, const std::function<bool()> &goesOn);
    void tellSkipped(const QStringList &skipped);

    QWidget &m_window;
    LibrarySteps &m_steps;
    WindowHost &m_host;
    Journal &m_journal;
};

} // namespace tarvel4
