#pragma once

#include <functional>

class QObject;

/** What the system sends to a program that it wants to end. */
namespace QuitSignals {

/** Has the event loop call \a quit at SIGTERM, SIGINT and SIGHUP, as long as \a context lives;
 * where there are no such signals, nothing. One that the program was started to ignore stays
 * ignored. */
void callOnSignal(QObject *context, const std::function<void()> &quit);

} // namespace QuitSignals
