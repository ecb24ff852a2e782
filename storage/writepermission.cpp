#include "storage/writepermission.h"

#include <QFile>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace tarvel4 {

namespace {

// What the current user may do is no part of what is stored; for root it would add to it.
constexpr QFileDevice::Permissions currentUser =
    QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser;

} // namespace

WritePermission::WritePermission(const QString &path)
    : m_path(path)
{
#ifdef Q_OS_UNIX
    // Nearly every song has it: one question to the system tells, and Qt asks six.
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) == 0 && (status.st_mode & S_IWUSR) != 0)
        return;
#endif
    m_old = QFile::permissions(path) & ~currentUser;
    if (!(m_old & QFileDevice::WriteOwner) && QFile::exists(path))
        m_wasAdded = QFile::setPermissions(path, m_old | QFileDevice::WriteOwner);
}

WritePermission::~WritePermission()
{
    if (m_wasAdded)
        QFile::setPermissions(m_path, m_old);
}

} // namespace tarvel4
