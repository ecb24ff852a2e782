#pragma once

#include <QtGlobal>

#include <functional>

QT_BEGIN_NAMESPACE
class QObject;
QT_END_NAMESPACE

namespace tarvel4 {

/** What the system sends to a program that it wants to end. */
namespace QuitSignals {

/** Has the event loop call \a quit at SIGTERM, SIGINT and SIGHUP, as long as \a context lives;
 * where there are no such signals, nothing. One that the program was started to ignore stays
 * ignored. */
void callOnSignal(QObject *context, const std::function<void()> &quit);

} // namespace QuitSignals

} // namespace tarvel4
