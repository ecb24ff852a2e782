#pragma once

#include <QFileDevice>
#include <QString>

namespace tarvel4 {

/** Adds the owner's write permission to a file, and takes it away again unless it was needed. */
class WritePermission
{
public:
    explicit WritePermission(const QString &path);
    ~WritePermission();
    Q_DISABLE_COPY(WritePermission)

    /** The file was saved and stays writable. */
    void keep() { m_wasAdded = false; }

private:
    QString m_path;
    QFileDevice::Permissions m_old;
    bool m_wasAdded = false;
};

} // namespace tarvel4
