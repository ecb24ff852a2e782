#pragma once

#include "library/messages.h"

#include <QCoreApplication>

namespace tarvel4 {

class RemovableDrive;
class RemovableDrives;
class WindowHost;

/** What a transfer tells: where it is done, and the songs are on a card or a stick that the system
 * can eject, a button beside Ok does that. */
class EjectOffer : public Messages
{
    Q_DECLARE_TR_FUNCTIONS(EjectOffer)

public:
    /** \a drives: null where nothing can be ejected; \a folder: the transfer's. */
    EjectOffer(WindowHost &host, RemovableDrives *drives, const QString &folder);

    void information(const QString &title, const QString &text,
                     const QStringList &details) override;
    void warning(const QString &title, const QString &text, const QStringList &details) override;
    void critical(const QString &title, const QString &text, const QStringList &details) override;

private:
    void eject(RemovableDrive &drive);

    WindowHost &m_host;
    RemovableDrives *m_drives;
    QString m_folder;
};

} // namespace tarvel4
