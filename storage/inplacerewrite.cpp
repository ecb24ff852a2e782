#include "storage/inplacerewrite.h"

#include "storage/regularfile.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFileInfo>

#include <cerrno>

namespace tarvel4 {

InPlaceRewrite::InPlaceRewrite(Disk &disk, const QString &path, Padding padding)
    : m_disk(disk)
    , m_permission(path)
    , m_file(path)
    , m_padding(padding)
    , m_isNew(!QFileInfo::exists(path))
{}

Outcome InPlaceRewrite::open()
{
    const QString path = m_file.fileName();
    Outcome opened;
    errno = EIO;
    if (!m_isNew && !QFileInfo(m_file).isFile())
        opened = {Outcome::Code::NotAFile, path, {}, {}};
    else if (!m_file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        opened = Outcome::ofSystemError(errno, path);
    else if (!FileBytes::readAll(m_file, m_old))
        opened = Outcome::ofSystemError(errno, path, false);
    if (!opened)
        qDebug() << "[MetaSong::saveToFile] Impossible to write to file. Maybe it's write "
                    "protected? Aborting!";
    return opened;
}

Outcome InPlaceRewrite::write(const QByteArray &image)
{
    // A full disk shows here, before the first old byte is touched.
    Outcome outcome = m_disk.reserve(m_file, image.size());
    if (!outcome) {
        qDebug() << "[MetaSong::saveToFile] No room for the new bytes, the old ones are kept:"
                 << m_file.fileName();
    } else {
        outcome = overwrite(image);
        if (outcome) {
            m_permission.keep();
            return outcome;
        }
        qDebug() << "[MetaSong::saveToFile] Impossible to write all bytes, the old ones go back:"
                 << m_file.fileName() << m_file.errorString();
        outcome = putBack(outcome);
    }
    if (m_isNew)
        m_disk.remove(m_file.fileName());
    return outcome;
}

/** Cuts the file only when its new bytes are safe, so that putting back takes no new room. */
Outcome InPlaceRewrite::overwrite(const QByteArray &bytes)
{
    const qint64 tooLong = m_file.size() - bytes.size();
    const QByteArray padding = tooLong > 0 ? m_padding(static_cast<int>(tooLong)) : QByteArray();
    if (!m_file.seek(0))
        return Outcome::ofSystemError(errno, m_file.fileName());
    Outcome outcome = m_disk.write(m_file, bytes + padding);
    if (outcome)
        outcome = m_disk.sync(m_file);
    if (!outcome || m_file.size() == bytes.size())
        return outcome;
    outcome = m_disk.truncate(m_file, bytes.size());
    return outcome ? m_disk.sync(m_file) : outcome;
}

/** Gives the file its old bytes; \a failure where it has them, for then it is all that happened. */
Outcome InPlaceRewrite::putBack(const Outcome &failure)
{
    if (overwrite(m_old))
        return failure;
    qDebug() << "[MetaSong::saveToFile] WARNING: the old bytes are NOT back:" << m_file.fileName()
             << m_file.errorString();
    return {Outcome::Code::NotRestored, failure.path,
            QCoreApplication::translate("Outcome", "la song va ripresa da un backup"), QString()};
}

} // namespace tarvel4
