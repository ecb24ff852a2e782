#pragma once

#include "storage/contenthash.h"
#include "storage/filerewrite.h"
#include "storage/replacement.h"
#include "storage/writepermission.h"

#include <QFile>

namespace tarvel4 {

/** Writes a file with a new start beside itself, and gives it its own name once it is whole. Until
 * then, and whenever that fails, the file is untouched and nothing lies beside it. */
class BesideRewrite : public FileRewrite
{
public:
    BesideRewrite(Disk &disk, const QString &path, const FileStamp &stamp,
                  const FileChange &change);
    ~BesideRewrite() override;

    Outcome open() override;
    QString temporary() const override { return m_temporaryPath; }
    Outcome write() override;
    QString written() const override { return m_temporaryPath; }
    Outcome sync() override;
    Outcome takeBack(const Outcome &cause) override;
    Outcome setAside() override;
    bool isSetAside() const override { return m_replacement.isSetAside(); }
    bool hasName() const override { return true; }
    Outcome publish() override;
    bool confirm(Outcome &outcome) override;
    QByteArray hash() const override { return m_hash; }

private:
    Outcome makeTemporary();
    Outcome seekTail();
    Outcome copyTail(ContentHash &hash);
    void removeTemporary();

    Disk &m_disk;
    QString m_path; ///< of the file itself, not of a link to it
    WritePermission m_permission;
    Replacement m_replacement;
    FileStamp m_stamp;
    FileChange m_change;
    QFile m_source;
    QFile m_temporary;
    QString m_temporaryPath; ///< a file opened by the system has no name of its own
    bool m_hasTemporary = false;
    QByteArray m_hash;
};

} // namespace tarvel4
