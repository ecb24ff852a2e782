#pragma once

#include <QDir>
#include <QFile>

#ifdef Q_OS_LINUX
#include <sched.h>
#include <sys/mount.h>
#endif

namespace tarvel4 {

/** A small volume in memory, mounted where only this process sees it. */
class TmpfsMount
{
public:
    TmpfsMount(const QString &folder, const char *options, const char *type = "tmpfs")
        : m_folder(QFile::encodeName(folder))
    {
        QDir().mkpath(folder);
#ifdef Q_OS_LINUX
        static const bool isPrivate = unshare(CLONE_NEWNS) == 0
            && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
        m_isMounted = isPrivate && mount(type, m_folder.constData(), type, 0, options) == 0;
#else
        Q_UNUSED(options)
        Q_UNUSED(type)
#endif
    }
    ~TmpfsMount()
    {
#ifdef Q_OS_LINUX
        if (m_isMounted)
            umount2(m_folder.constData(), MNT_DETACH);
#endif
    }
    Q_DISABLE_COPY(TmpfsMount)

    bool isMounted() const
    {
        return m_isMounted;
    }

    /** What the system calls it. */
    QByteArray name() const
    {
        return m_folder;
    }

    bool makeReadOnly()
    {
#ifdef Q_OS_LINUX
        return mount("tmpfs", m_folder.constData(), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr) == 0;
#else
        return false;
#endif
    }

private:
    QByteArray m_folder;
    bool m_isMounted = false;
};

} // namespace tarvel4
