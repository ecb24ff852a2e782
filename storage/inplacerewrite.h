#pragma once

#include "storage/filerewrite.h"
#include "storage/writepermission.h"

#include <QFile>

namespace tarvel4 {

/** Gives a file new bytes in its own place, so that it stays the same file to whoever links to it.
 */
class InPlaceRewrite : public FileRewrite
{
public:
    InPlaceRewrite(Disk &disk, const QString &path, const FileChange &change);

    Outcome open() override;
    Outcome write() override;
    QString written() const override { return m_file.fileName(); }
    Outcome sync() override { return m_disk.sync(m_file); }
    Outcome takeBack(const Outcome &cause) override;
    bool confirm(Outcome &outcome) override;
    QByteArray hash() const override;

private:
    Outcome overwrite(const QByteArray &bytes);
    void removeNew();

    Disk &m_disk;
    WritePermission m_permission;
    QFile m_file;
    QByteArray m_old;
    QByteArray m_new;
    bool m_isNew;
};

} // namespace tarvel4
