#include "ui/ejectoffer.h"

#include "ui/removabledrive.h"
#include "ui/windowhost.h"

#include <QGuiApplication>

namespace tarvel4 {

namespace {

RemovableDrive::Ejection ejectWaiting(RemovableDrive &drive)
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    RemovableDrive::Ejection ejection = drive.eject();
    QGuiApplication::restoreOverrideCursor();
    return ejection;
}

} // namespace

EjectOffer::EjectOffer(WindowHost &host, RemovableDrives *drives, const QString &folder)
    : m_host(host)
    , m_drives(drives)
    , m_folder(folder)
{}

void EjectOffer::information(const QString &title, const QString &text, const QStringList &details)
{
    const auto drive = m_drives ? m_drives->driveOf(m_folder) : nullptr;
    if (!drive)
        m_host.information(title, text, details);
    else if (m_host.offer(QMessageBox::Information, title, text, details, tr("Espelli")))
        eject(*drive);
}

void EjectOffer::warning(const QString &title, const QString &text, const QStringList &details)
{
    m_host.warning(title, text, details);
}

void EjectOffer::critical(const QString &title, const QString &text, const QStringList &details)
{
    m_host.critical(title, text, details);
}

void EjectOffer::eject(RemovableDrive &drive)
{
    using Result = RemovableDrive::Ejection::Result;
    const QString title = tr("Espulsione");
    for (;;) {
        const RemovableDrive::Ejection ejection = ejectWaiting(drive);
        if (ejection.result == Result::Ejected)
            return m_host.information(title,
                                      tr("La memoria è stata espulsa: ora la puoi togliere."), {});
        if (ejection.result == Result::Unmounted)
            return m_host.information(
                title,
                tr("La memoria è stata scollegata, quindi la puoi togliere, ma non è stata "
                   "espulsa:")
                    + QLatin1String("\n\n") + ejection.cause,
                {});
        const QString text = tr("Non è stato possibile espellere la memoria:")
            + QLatin1String("\n\n") + ejection.cause;
        if (!m_host.offer(QMessageBox::Warning, title, text, {}, tr("Riprova")))
            return;
    }
}

} // namespace tarvel4
