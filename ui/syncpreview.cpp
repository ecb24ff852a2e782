#include "ui/syncpreview.h"

#include "db/usersongsreltablemodel.h"
#include "library/songrows.h"
#include "library/updatepreview.h"
#include "library/usersettings.h"
#include "ui/windowhost.h"

#include <QAction>
#include <QEvent>

namespace tarvel4 {

SyncPreview::SyncPreview(const Widgets &widgets, Database &db, WindowHost &host,
                         std::function<void()> synchronise)
    : m_widgets(widgets)
    , m_db(db)
    , m_host(host)
{
    m_widgets.action->setEnabled(m_widgets.updateButton->isEnabled());
    m_widgets.updateButton->installEventFilter(this);
    connect(
        m_widgets.action, &QAction::triggered, this, [this, synchronise = std::move(synchronise)] {
            if (!m_host.isRunning() && show(*m_widgets.window, PreviewDialog::Next::Synchronise))
                synchronise();
        });
    m_host.setPreview([this](QWidget &question) { show(question, PreviewDialog::Next::Question); });
}

bool SyncPreview::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_widgets.updateButton && event->type() == QEvent::EnabledChange)
        m_widgets.action->setEnabled(m_widgets.updateButton->isEnabled());
    return QObject::eventFilter(watched, event);
}

/** True where the user saw it and wants to go on. */
bool SyncPreview::show(QWidget &parent, PreviewDialog::Next next)
{
    if (!m_model)
        return false;
    const QStringList songs = SongRows::paths(*m_model);
    const auto plan = m_host.over(parent, [&] {
        return UpdatePreview(m_db, m_host, m_host).run(songs, UserSettings::copyrightAsk(true));
    });
    m_host.endProgress();
    return plan && PreviewDialog(*plan, next, &parent).exec() == QDialog::Accepted;
}

} // namespace tarvel4
