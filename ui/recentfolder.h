#pragma once

#include <QString>

namespace tarvel4 {

/** Where the last file dialog of a kind ended, also in an earlier run of the program. */
class RecentFolder
{
public:
    explicit RecentFolder(QLatin1String kind)
        : m_key(QStringLiteral("folders/") + kind)
    {}

    /** \a first where there was none, or where it is gone. */
    QString folder(const QString &first) const;
    void setFolder(const QString &folder) const;

private:
    QString m_key;
};

} // namespace tarvel4
