#include "library/workflowlog.h"

#include "storage/debuglog.h"

#include <QByteArray>
#include <QDebug>

namespace tarvel4 {

namespace {

constexpr int titleRulerWidth = 44;
constexpr int songRulerWidth = 74;
constexpr int titleIndent = 10;

} // namespace

void WorkflowLog::title(const char *text)
{
    const QByteArray ruler(titleRulerWidth, '=');
    qDebug() << ruler.constData();
    qDebug() << (QByteArray(titleIndent, ' ') + text).constData();
    qDebug() << ruler.constData();
}

void WorkflowLog::songEnd()
{
    qCDebug(debugLog) << QByteArray(songRulerWidth, '=').constData();
}

void WorkflowLog::failures(const char *operation, const QStringList &paths)
{
    if (paths.isEmpty())
        return;
    qDebug() << operation << "WARNING: songs that failed:" << paths.size();
    for (const QString &path : paths)
        qDebug() << operation << "failed:" << path;
}

} // namespace tarvel4
