#include "cli/console.h"

#include <QList>

#include <array>
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <langinfo.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace tarvel4 {

namespace {

volatile std::sig_atomic_t s_interrupted = 0;
std::array<int, 2> s_wakeUp{-1, -1}; ///< a pipe that ends a poll() when a signal comes
bool s_isPipeClosed = false;

void interrupt(int)
{
    const int error = errno;
    s_interrupted = 1;
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(s_wakeUp[1], &byte, 1);
    errno = error;
}

/** A descriptor closed by the caller would be given to the next file opened: to a song. */
void occupyStandardStreams()
{
    for (int stream : {Console::Input, Console::Output, Console::Error}) {
        if (::fcntl(stream, F_GETFD) < 0 && ::open("/dev/null", O_RDONLY) != stream)
            std::abort();
    }
}

/** Qt names files in the locale's encoding, and in one other than UTF-8 it would reach others. */
void useUtf8()
{
    std::setlocale(LC_ALL, "");
    if (std::strcmp(::nl_langinfo(CODESET), "UTF-8") == 0)
        return;
    const QByteArray all = qgetenv("LC_ALL");
    if (!all.isEmpty()) {
        for (const char *name : {"LANG", "LC_MESSAGES"})
            qputenv(name, all);
        qunsetenv("LC_ALL");
    }
    qputenv("LC_CTYPE", "C.UTF-8");
}

void catchSignals()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    if (::pipe(s_wakeUp.data()) != 0)
        return;
    for (int end : s_wakeUp) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
    struct sigaction action = {};
    action.sa_handler = interrupt;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    for (int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before = {};
        ::sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) // a background job and nohup don't want to be stopped
            ::sigaction(signal, &action, nullptr);
    }
}

/** Waits until there is something to read, or the end of it; false when a signal came instead. */
bool awaitInput()
{
    while (!Console::interrupted()) {
        std::array<struct pollfd, 2> wait{{{Console::Input, POLLIN, 0}, {s_wakeUp[0], POLLIN, 0}}};
        if (::poll(wait.data(), wait.size(), -1) < 0 && errno != EINTR)
            return false;
        if (wait[0].revents != 0)
            return true;
    }
    return false;
}

} // namespace

void Console::prepare()
{
    occupyStandardStreams();
    useUtf8();
    catchSignals();
}

QByteArrayList Console::words(int argc, char **argv)
{
    QByteArrayList words; // Qt's own list of them has lost what is not valid in the locale
    for (int i = 1; i < argc; ++i)
        words += argv[i];
    return words;
}

bool Console::isTerminal(Stream stream)
{
    return ::isatty(stream) == 1;
}

bool Console::hasColours(Stream stream)
{
    const QByteArray terminal = qgetenv("TERM");
    return isTerminal(stream) && qEnvironmentVariableIsEmpty("NO_COLOR") && !terminal.isEmpty()
        && terminal != "dumb";
}

int Console::columns()
{
    constexpr int usual = 80;
    struct winsize size = {};
    return ::ioctl(Error, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : usual;
}

bool Console::write(Stream stream, const QByteArray &bytes)
{
    const char *next = bytes.constData();
    const char *const end = next + bytes.size();
    while (next < end) {
        const auto written = ::write(stream, next, static_cast<std::size_t>(end - next));
        if (written >= 0) {
            next += written;
        } else if (errno == EAGAIN) { // a pipe that its other owner made non-blocking
            struct pollfd wait = {stream, POLLOUT, 0};
            ::poll(&wait, 1, -1);
        } else if (errno != EINTR) {
            s_isPipeClosed |= stream == Output && errno == EPIPE;
            return false;
        }
    }
    return true;
}

bool Console::isPipeClosed()
{
    return s_isPipeClosed;
}

bool Console::readLine(QByteArray &line)
{
    line.clear();
    while (awaitInput()) {
        char byte = 0;
        const auto got = ::read(Input, &byte, 1);
        if (got == 0 || (got < 0 && errno != EINTR && errno != EAGAIN))
            return !line.isEmpty();
        if (got == 1 && byte == '\n')
            return true;
        if (got == 1)
            line += byte;
    }
    return false;
}

bool Console::readAll(QByteArray &bytes)
{
    std::array<char, 1 << 16> block{};
    while (awaitInput()) {
        const auto got = ::read(Input, block.data(), block.size());
        if (got == 0)
            return true;
        if (got > 0)
            bytes.append(block.data(), static_cast<int>(got));
        else if (errno != EINTR && errno != EAGAIN)
            return false;
    }
    return false;
}

bool Console::interrupted()
{
    return s_interrupted != 0;
}

} // namespace tarvel4
