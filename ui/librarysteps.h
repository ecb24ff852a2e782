#pragma once

#include <QCoreApplication>
#include <QStringList>

#include <functional>

QT_BEGIN_NAMESPACE
class QAbstractButton;
class QTableView;
QT_END_NAMESPACE

namespace tarvel4 {

class Database;
class JobReport;
class Journal;
class RemovableDrives;
class UserSongsRelTableModel;
class Volume;
class WindowHost;

/** The three steps of the window's workflow, and which of their buttons can be pressed when. None
 * is begun while a job runs: a screen reader can press what lies below its progress. */
class LibrarySteps
{
    Q_DECLARE_TR_FUNCTIONS(LibrarySteps)

public:
    struct Widgets
    {
        QAbstractButton *updateButton;
        QAbstractButton *transferButton;
        QTableView *table;
    };

    LibrarySteps(const Widgets &widgets, Database &db, WindowHost &host, Journal &journal,
                 const Volume &volume);

    /** Null, as it is at first, where there is no table: then there is nothing to do. */
    void setModel(UserSongsRelTableModel *model) { m_model = model; }
    /** What may be ejected behind a transfer; null, as it is at first: nothing. */
    void setDrives(RemovableDrives *drives) { m_drives = drives; }
    /** Called when the summary of an import has stored whether it is to be shown again. */
    void setCopyrightAskChanged(std::function<void()> changed)
    {
        m_copyrightAskChanged = std::move(changed);
    }

    /** Step 1: asks for files and imports them. */
    void chooseAndImport();
    /** Imports files in the place of those before; does nothing without any. */
    void importFiles(const QStringList &files);
    /** Imports the chosen files again. */
    void importSongs();
    /** Step 2: synchronises the songs of the table with the catalogue. */
    void synchronise();
    /** Step 3: asks for a folder of the memory and copies the chosen files there. */
    void transfer();
    /** Copies the chosen files as they are before a synchronisation. */
    void backUp();

private:
    bool updateSongs();
    bool makeBackup();
    void copyTo(const QString &dir);
    void tellReport(JobReport &report, const QStringList &paths);

    Widgets m_widgets;
    Database &m_db;
    WindowHost &m_host;
    Journal &m_journal;
    const Volume &m_volume;
    UserSongsRelTableModel *m_model = nullptr;
    RemovableDrives *m_drives = nullptr;
    std::function<void()> m_copyrightAskChanged;
    QStringList m_selectedFiles; ///< of the last import: what backup and transfer copy
};

} // namespace tarvel4
