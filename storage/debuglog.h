#pragma once

#include <QLoggingCategory>

namespace tarvel4 {

/**
 * The category that qDebug() writes to: qCDebug(debugLog) gives the same line, but puts it together
 * only where it goes somewhere. For the lines that every song or folder costs.
 */
inline const QLoggingCategory &debugLog()
{
    return *QLoggingCategory::defaultCategory();
}

} // namespace tarvel4
