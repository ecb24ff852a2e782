#include "storage/replacement.h"

#include "storage/recovery.h"

#include <QDebug>
#include <QFileInfo>

#include <utility>

namespace tarvel4 {

Replacement::Replacement(Disk &disk, const QString &path)
    : m_disk(disk)
    , m_path(path)
{}

Outcome Replacement::setAside()
{
    if (!QFileInfo::exists(m_path) || !m_disk.losesReplacedFiles(m_path))
        return {};
    const QString aside = Recovery::recoveryPathOf(m_path);
    // It may be all that is left of a song; whoever knows songs decides (Recovery::recover).
    if (QFileInfo::exists(aside))
        return {Outcome::Code::AlreadyExists, aside, {}, {}};
    const Outcome outcome = m_disk.replace(m_path, aside);
    if (outcome)
        m_aside = aside;
    return outcome;
}

Outcome Replacement::publish(const QString &from)
{
    const Outcome outcome = m_disk.replace(from, m_path);
    m_isPublished = static_cast<bool>(outcome);
    return outcome ? outcome : giveBack(outcome);
}

void Replacement::removeOld()
{
    const QString aside = std::exchange(m_aside, {});
    if (!aside.isEmpty() && !m_disk.remove(aside))
        qDebug() << "[Replacement] WARNING: can't be removed:" << aside;
}

Outcome Replacement::giveBack(const Outcome &cause)
{
    const QString aside = std::exchange(m_aside, {});
    const auto isFree = [this] { return !m_isPublished || m_disk.remove(m_path); };
    if (aside.isEmpty() || (isFree() && m_disk.replace(aside, m_path)))
        return cause;
    qDebug() << "[Replacement] WARNING: the old file is now called" << aside;
    return {Outcome::Code::NotRestored, m_path, aside, {}};
}

} // namespace tarvel4
