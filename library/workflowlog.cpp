#include "library/workflowlog.h"

#include "library/songoutcome.h"
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

void WorkflowLog::refused(const char *operation, const SongOutcome &song)
{
    qDebug().noquote() << operation
                       << (song.result == SongResult::Unreadable ? "Reading" : "Saving")
                       << song.path << "refused:" << song.cause.sentence();
}

} // namespace tarvel4
