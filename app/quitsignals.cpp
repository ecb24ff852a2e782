#include "app/quitsignals.h"

#include <QSocketNotifier>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace tarvel4 {

#ifdef Q_OS_UNIX

namespace {

int ends[2]; // of a pipe: hardly anything but write() may be called while a signal is handled

extern "C" void passOn(int signal)
{
    const int before = errno;
    const char byte = static_cast<char>(signal);
    const ssize_t written = write(ends[1], &byte, 1); // a full pipe holds signals enough
    Q_UNUSED(written)
    errno = before;
}

void handle(int signal)
{
    struct sigaction action = {};
    if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN)
        return;
    action.sa_handler = passOn;
    action.sa_flags = SA_RESTART; // no read or write of a song is cut short
    sigaction(signal, &action, nullptr);
}

} // namespace

void QuitSignals::callOnSignal(QObject *context, const std::function<void()> &quit)
{
    if (pipe(ends) != 0)
        return;
    for (const int end : ends) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    auto *notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, context);
    QObject::connect(notifier, &QSocketNotifier::activated, context, [quit] {
        char bytes[16];
        while (read(ends[0], bytes, sizeof bytes) > 0) {}
        quit();
    });
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        handle(signal);
}

#else

void QuitSignals::callOnSignal(QObject *context, const std::function<void()> &quit)
{
    Q_UNUSED(context)
    Q_UNUSED(quit)
}

#endif

} // namespace tarvel4
