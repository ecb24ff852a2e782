#pragma once

#include "storage/recovery.h"

#include <QStringList>

namespace tarvel4 {

/** What a job tells at its end, as translated plain text; \a details: one line for each thing that
 * went wrong, "name: cause", or what else is to be known where all went well. */
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

    /** A song that a power cut or a kill had caught was met before the job began; \a cause: why it
     * waits. */
    virtual void recovered(const QString &path, Recovery::Result result, const Outcome &cause)
    {
        Q_UNUSED(path)
        Q_UNUSED(result)
        Q_UNUSED(cause)
    }
};

} // namespace tarvel4
