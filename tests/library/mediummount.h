#pragma once

#include "tests/storage/tmpfsmount.h"

#include <QTemporaryDir>

namespace tarvel4 {

/** A folder mounted as a card of the user anna is, where only this process sees it. */
class MediumMount
{
public:
    explicit MediumMount(const QString &name)
        : m_media(QStringLiteral("/media"), "size=1m")
        , m_root(QStringLiteral("/media/anna/") + name)
    {
#ifdef Q_OS_LINUX
        m_isMounted = m_media.isMounted() && QDir().mkpath(m_root)
            && mount(QFile::encodeName(m_folder.path()).constData(),
                     QFile::encodeName(m_root).constData(), nullptr, MS_BIND, nullptr)
                == 0;
#endif
    }
    ~MediumMount()
    {
#ifdef Q_OS_LINUX
        if (m_isMounted)
            umount2(QFile::encodeName(m_root).constData(), MNT_DETACH);
#endif
    }
    Q_DISABLE_COPY(MediumMount)

    bool isMounted() const
    {
        return m_isMounted;
    }
    const QString &root() const
    {
        return m_root;
    }

private:
    QTemporaryDir m_folder;
    TmpfsMount m_media;
    QString m_root;
    bool m_isMounted = false;
};

} // namespace tarvel4
