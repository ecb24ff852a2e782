#include "storage/inplacerewrite.h"

#include "storage/contenthash.h"
#include "storage/regularfile.h"
#include "storage/systemerror.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFileInfo>

namespace tarvel4 {

InPlaceRewrite::InPlaceRewrite(Disk &disk, const QString &path, const FileChange &change)
    : m_disk(disk)
    , m_permission(path)
    , m_file(path)
    , m_old(change.oldHead)
    , m_new(change.newHead)
    , m_isNew(!QFileInfo::exists(path))
{}

Outcome InPlaceRewrite::open()
{
    const QString path = m_file.fileName();
    Outcome opened;
    SystemError::presumeFailedMedium();
    if (!m_isNew && !QFileInfo(m_file).isFile())
        opened = {Outcome::Code::NotAFile, path, {}, {}};
    else if (!m_file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        opened = SystemError::outcomeOf(false, path);
    else if (m_old.isNull() && !FileBytes::readAll(m_file, m_old))
        opened = SystemError::outcomeOf(false, path, false);
    if (!opened)
        qDebug() << "[MetaSong::saveToFile] Impossible to write to file. Maybe it's write "
                    "protected? Aborting!";
    return opened;
}

Outcome InPlaceRewrite::write()
{
    // A full disk shows here, before the first old byte is touched.
    Outcome outcome = m_disk.reserve(m_file, m_new.size());
    if (!outcome) {
        qDebug() << "[MetaSong::saveToFile] No room for the new bytes, the old ones are kept:"
                 << m_file.fileName();
        removeNew();
        return outcome;
    }
    outcome = overwrite(m_new);
    return outcome ? outcome : takeBack(outcome);
}

Outcome InPlaceRewrite::takeBack(const Outcome &cause)
{
    qDebug() << "[MetaSong::saveToFile] Impossible to write all bytes, the old ones go back:"
             << m_file.fileName() << m_file.errorString();
    const bool isBack = overwrite(m_old) && m_disk.sync(m_file);
    removeNew();
    if (isBack)
        return cause;
    qDebug() << "[MetaSong::saveToFile] WARNING: the old bytes are NOT back:" << m_file.fileName()
             << m_file.errorString();
    return {Outcome::Code::NotRestored, cause.path,
            QCoreApplication::translate("Outcome", "la song va ripresa da un backup"), QString()};
}

/** An open file can't be removed on Windows. */
void InPlaceRewrite::removeNew()
{
    if (!m_isNew)
        return;
    m_file.close();
    m_disk.remove(m_file.fileName());
}

bool InPlaceRewrite::confirm(Outcome &outcome)
{
    if (outcome)
        m_permission.keep();
    return false;
}

QByteArray InPlaceRewrite::hash() const
{
    ContentHash hash;
    hash.add(m_new);
    return hash.result();
}

Outcome InPlaceRewrite::overwrite(const QByteArray &bytes)
{
    if (!m_file.seek(0))
        return SystemError::outcomeOf(false, m_file.fileName());
    const Outcome outcome = m_disk.write(m_file, bytes);
    if (!outcome || m_file.size() == bytes.size())
        return outcome;
    return m_disk.truncate(m_file, bytes.size());
}

} // namespace tarvel4
