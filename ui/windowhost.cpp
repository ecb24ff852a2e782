#include "ui/windowhost.h"

#include "library/jobreport.h"
#include "library/recoveryjob.h"
#include "library/songpath.h"
#include "ui/announcement.h"
#include "ui/backupdialog.h"
#include "ui/nocopyrightdialog.h"
#include "ui/plaintext.h"
#include "ui/proceeddialog.h"
#include "ui/progressdialog.h"

#include <QApplication>
#include <QPushButton>

#include <utility>

namespace tarvel4 {

WindowHost::WindowHost(QWidget *window)
    : m_window(window)
{}

WindowHost::~WindowHost() = default;

void WindowHost::beginProgress(const ProgressTexts &texts, int maximum)
{
    m_jobBegins();
    m_progressDialog.reset(); // which must not own the next one
    m_progressDialog = std::make_unique<ProgressDialog>(texts, maximum, dialogParent());
    Announcement::say(*m_window, texts.label);
}

void WindowHost::setProgressMaximum(int maximum)
{
    if (m_progressDialog)
        m_progressDialog->setMaximum(maximum);
}

void WindowHost::setProgress(int value)
{
    if (!m_progressDialog)
        return;
    if (m_progressDialog->isDue(value)) {
        m_progressDialog->setLabelText(tr("%1 di %2").arg(value).arg(m_progressDialog->maximum()));
        m_progressDialog->setValue(value);
    }
    processPendingEvents();
}

void WindowHost::setProgressValue(int value)
{
    if (m_progressDialog && m_progressDialog->isDue(value))
        m_progressDialog->setValue(value);
    processPendingEvents();
}

void WindowHost::processPendingEvents()
{
    QCoreApplication::processEvents();
}

void WindowHost::endProgress()
{
    const bool isCancelled = m_progressDialog && m_progressDialog->cancelled();
    m_progressDialog.reset();
    if (isCancelled)
        Announcement::say(*m_window, tr("Lavoro interrotto"));
}

void WindowHost::report(const JobReport &report) const
{
    Announcement::say(*m_window, report.heading());
    if (m_takeReport)
        m_takeReport(report);
}

bool WindowHost::wasCancelled() const
{
    return m_stopped || (m_progressDialog && m_progressDialog->cancelled());
}

Answer WindowHost::askNotPublished(const QString &fileName)
{
    NoCopyrightDialog dialog(dialogParent());
    dialog.setFileName(fileName);
    return ask(dialog);
}

Answer WindowHost::askOverwrite(const QString &source, const QString &destination)
{
    NoCopyrightDialog dialog(dialogParent());
    dialog.setFileName(SongPath::fileName(source));
    dialog.compare(source, destination);
    dialog.setMessage(tr("esiste già, vuoi sostituirlo?"));
    return ask(dialog);
}

Answer WindowHost::ask(NoCopyrightDialog &dialog)
{
    // required: closing the dialog answers yes
    const auto answer = static_cast<Answer>(dialog.exec());
    return m_stopped ? Answer::NoToAll : answer;
}

BackupChoice WindowHost::askBackup()
{
    BackupDialog dialog(dialogParent());
    if (m_preview)
        dialog.setPreview([this, &dialog] { m_preview(dialog); });
    BackupChoice choice;
    choice.action = static_cast<BackupChoice::Action>(dialog.exec());
    choice.folder = dialog.backupDir();
    return choice;
}

ProceedChoice WindowHost::askProceed(const ImportSummary &summary)
{
    ProceedDialog dialog(dialogParent());
    dialog.setSummary(summary.found, summary.published, summary.unknown);
    dialog.setProblems(summary.problems);
    ProceedChoice choice;
    choice.synchronise = dialog.exec() == QDialog::Accepted;
    choice.showAgain = dialog.showAgain();
    return choice;
}

void WindowHost::information(const QString &title, const QString &text, const QStringList &details)
{
    offer(QMessageBox::Information, title, text, details, {});
}

void WindowHost::warning(const QString &title, const QString &text, const QStringList &details)
{
    offer(QMessageBox::Warning, title, text, details, {});
}

void WindowHost::critical(const QString &title, const QString &text, const QStringList &details)
{
    offer(QMessageBox::Critical, title, text, details, {});
}

void WindowHost::finishSaves(Journal &journal, const QStringList &files)
{
    m_jobBegins();
    RecoveryJob recovery(*this);
    recovery.finishSaves(journal);
    recovery.recoverBeside(files);
    tellNotices();
}

void WindowHost::recovered(const QString &path, Recovery::Result result, const Outcome &cause)
{
    const QString sentence = RecoveryJob::sentence(path, result, cause);
    switch (result) {
    case Recovery::Result::GivenBack:
    case Recovery::Result::Removed:
    case Recovery::Result::PutBack:
        m_putRight += sentence;
        break;
    case Recovery::Result::Waits:
        m_waiting += sentence;
        break;
    case Recovery::Result::Kept:
    case Recovery::Result::ChangedSince:
        m_left += sentence;
        break;
    case Recovery::Result::NoneThere:
        break;
    }
}

bool WindowHost::tellNotices()
{
    const bool hasRecovered = tellRecovered();
    const QStringList notices = std::exchange(m_journalNotices, {});
    if (!notices.isEmpty())
        warning(tr("Registro delle modifiche"), notices.join(QLatin1String("\n\n")), {});
    return hasRecovered || !notices.isEmpty();
}

bool WindowHost::tellRecovered()
{
    QStringList lines;
    const auto count = [&lines](const QString &text, const QStringList &songs) {
        if (!songs.isEmpty())
            lines += text.arg(songs.size());
    };
    count(tr("Song messe a posto: %1"), m_putRight);
    count(tr("Song da mettere a posto più tardi: %1"), m_waiting);
    count(tr("Song lasciate come sono: %1"), m_left);
    const QStringList details = m_putRight + m_waiting + m_left;
    m_putRight.clear();
    m_waiting.clear();
    m_left.clear();
    const QString title = tr("Salvataggi interrotti");
    if (details.size() == 1)
        information(title, details.constFirst(), {});
    else if (!details.isEmpty())
        information(title,
                    tr("Alcuni salvataggi erano stati interrotti.") + QLatin1String("\n\n")
                        + lines.join(QLatin1Char('\n')),
                    details);
    return !details.isEmpty();
}

/** A question asked during a run lies over its progress. */
QWidget *WindowHost::dialogParent() const
{
    if (m_progressDialog)
        return m_progressDialog.get();
    QWidget *open = QApplication::activeModalWidget(); // as the song editor while it goes on
    return open ? open : m_window;
}

bool WindowHost::offer(QMessageBox::Icon icon, const QString &title, const QString &text,
                       const QStringList &details, const QString &button)
{
    QMessageBox box(icon, title, text, QMessageBox::Ok, dialogParent());
    box.setTextFormat(Qt::PlainText);
    const QPushButton *more =
        button.isEmpty() ? nullptr : box.addButton(button, QMessageBox::ActionRole);
    box.setDefaultButton(QMessageBox::Ok);
    box.setEscapeButton(QMessageBox::Ok);
    if (icon == QMessageBox::Information && details.size() == 1)
        PlainText::addTo(box, details.first()); // too short and too welcome to be hidden
    else // no button for it where there is none
        box.setDetailedText(details.join(QLatin1Char('\n')));
    box.exec();
    return more && box.clickedButton() == more;
}

} // namespace tarvel4
