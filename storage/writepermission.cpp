#include "storage/writepermission.h"

#include <QFile>

namespace tarvel4 {

namespace {

// What the current user may do is no part of what is stored; for root it would add to it.
constexpr QFileDevice::Permissions currentUser =
    QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser;

} // namespace

WritePermission::WritePermission(const QString &path)
    : m_path(path)
    , m_old(QFile::permissions(path) & ~currentUser)
{
    if (!(m_old & QFileDevice::WriteOwner) && QFile::exists(path))
        m_wasAdded = QFile::setPermissions(path, m_old | QFileDevice::WriteOwner);
}

WritePermission::~WritePermission()
{
    if (m_wasAdded)
        QFile::setPermissions(m_path, m_old);
}

} // namespace tarvel4
