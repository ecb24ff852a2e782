#pragma once

#include "storage/recovery.h"

#include <QStringList>

namespace tarvel4 {

/** What a job tells at its end, as translated plain text; \a details: one line for each thing that
 * went wrong, "name: cause". */
class Messages
{
public:
    virtual ~Messages() = default;

    virtual void information(const QString &title, const QString &text,
                             const QStringList &details = {}) = 0;
    virtual void warning(const QString &title, const QString &text,
                         const QStringList &details = {}) = 0;
    virtual void critical(const QString &title, const QString &text,
                          const QStringList &details = {}) = 0;

    /** A file that a power cut had left aside was met before the job began. */
    virtual void recovered(const QString &path, Recovery::Result result)
    {
        Q_UNUSED(path)
        Q_UNUSED(result)
    }
};

} // namespace tarvel4
