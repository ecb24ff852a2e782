#include "storage/inplacerewrite.h"

#include "songs/midi/cutpadding.h"
#include "storage/filebytes.h"

#include <QDebug>
#include <QFileInfo>

namespace tarvel4 {

InPlaceRewrite::InPlaceRewrite(Disk &disk, const QString &path)
    : m_disk(disk)
    , m_permission(path)
    , m_file(path)
    , m_isNew(!QFileInfo::exists(path))
{}

bool InPlaceRewrite::open()
{
    if (!m_isNew && !QFileInfo(m_file).isFile())
        return false;
    return m_file.open(QIODevice::ReadWrite | QIODevice::Unbuffered)
        && FileBytes::readAll(m_file, m_old);
}

bool InPlaceRewrite::write(const QByteArray &image)
{
    // A full disk shows here, before the first old byte is touched.
    if (!m_disk.reserve(m_file, image.size())) {
        qDebug() << "[MetaSong::saveToFile] No room for the new bytes, the old ones are kept:"
                 << m_file.fileName();
    } else if (overwrite(image)) {
        m_permission.keep();
        return true;
    } else {
        qDebug() << "[MetaSong::saveToFile] Impossible to write all bytes, the old ones go back:"
                 << m_file.fileName() << m_file.errorString();
        putBack();
    }
    if (m_isNew)
        m_disk.remove(m_file.fileName());
    return false;
}

/** Cuts the file only when its new bytes are safe, so that putting back takes no new room. */
bool InPlaceRewrite::overwrite(const QByteArray &bytes)
{
    const qint64 tooLong = m_file.size() - bytes.size();
    const QByteArray padding = tooLong > 0 ? CutPadding::ofSize(int(tooLong)) : QByteArray();
    if (!m_file.seek(0) || !m_disk.write(m_file, bytes + padding) || !m_disk.sync(m_file))
        return false;
    return m_file.size() == bytes.size()
        || (m_disk.truncate(m_file, bytes.size()) && m_disk.sync(m_file));
}

void InPlaceRewrite::putBack()
{
    if (!overwrite(m_old))
        qDebug() << "[MetaSong::saveToFile] WARNING: the old bytes are NOT back:"
                 << m_file.fileName() << m_file.errorString();
}

} // namespace tarvel4
