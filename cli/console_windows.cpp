#include "cli/console.h"

#include <QString>

#include <algorithm>
#include <atomic>
#include <vector>

#include <windows.h>

#include <shellapi.h>

namespace tarvel4 {

namespace {

std::atomic<bool> s_interrupted{false};
std::atomic<bool> s_isReading{false};
HANDLE s_mainThread = nullptr;
bool s_isPipeClosed = false;
bool s_hasEscapes[3] = {};

HANDLE handleOf(Console::Stream stream)
{
    constexpr DWORD ids[] = {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};
    return GetStdHandle(ids[stream]);
}

/** Runs in a thread of its own. Where the window is closed, the system ends the process once
 * this returns, so that the main thread gets its seconds here. */
BOOL WINAPI interrupt(DWORD event)
{
    constexpr DWORD retryMilliseconds = 10;
    if (s_interrupted.exchange(true))
        return FALSE;
    while (s_isReading) { // nothing else may be cancelled: it could be the write of a song
        CancelSynchronousIo(s_mainThread);
        Sleep(retryMilliseconds);
    }
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        Sleep(INFINITE);
    return TRUE;
}

/** Marks what the handler may cancel. */
class Reading
{
public:
    Reading() { s_isReading = true; }
    ~Reading() { s_isReading = false; }
    Q_DISABLE_COPY(Reading)
};

/** Bytes of standard input, those that are typed in UTF-8; none at its end. False after an error,
 * and when the user stopped it. */
bool readSome(QByteArray &bytes)
{
    constexpr DWORD blockSize = 1 << 14;
    const Reading reading;
    bytes.clear();
    if (s_interrupted)
        return false;
    DWORD got = 0;
    if (!Console::isTerminal(Console::Input)) {
        bytes.resize(blockSize);
        const bool isRead =
            ReadFile(handleOf(Console::Input), bytes.data(), blockSize, &got, nullptr) != 0;
        bytes.truncate(static_cast<int>(got));
        return (isRead || GetLastError() == ERROR_BROKEN_PIPE || GetLastError() == ERROR_HANDLE_EOF)
            && !s_interrupted;
    }
    std::vector<wchar_t> text(blockSize);
    // Ctrl+C reads nothing, and the handler may not have begun yet.
    if (!ReadConsoleW(handleOf(Console::Input), text.data(), blockSize, &got, nullptr) || got == 0)
        return false;
    constexpr wchar_t controlZ = 0x1A; // what ends an input that is typed
    if (text[0] != controlZ)
        bytes = QString::fromWCharArray(text.data(), static_cast<int>(got)).toUtf8();
    return !s_interrupted;
}

bool writeToTerminal(HANDLE terminal, const QByteArray &bytes)
{
    constexpr qsizetype mostLetters = 8000; // of one call; older systems take little more
    const QString text = QString::fromUtf8(bytes);
    for (qsizetype begin = 0; begin < text.size();) {
        qsizetype count = std::min(mostLetters, text.size() - begin);
        if (begin + count < text.size() && text.at(begin + count - 1).isHighSurrogate())
            --count;
        DWORD written = 0;
        if (!WriteConsoleW(terminal, text.utf16() + begin, static_cast<DWORD>(count), &written,
                           nullptr))
            return false;
        begin += written;
    }
    return true;
}

} // namespace

void Console::prepare()
{
    DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &s_mainThread, 0,
                    FALSE, DUPLICATE_SAME_ACCESS);
    SetConsoleCtrlHandler(interrupt, TRUE);
    for (Stream stream : {Output, Error}) {
        DWORD mode = 0;
        s_hasEscapes[stream] = GetConsoleMode(handleOf(stream), &mode)
            && SetConsoleMode(handleOf(stream), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
}

/** The system keeps the words in UTF-16; \a argv has lost what is not in the code page. */
QByteArrayList Console::words(int argc, char **argv)
{
    Q_UNUSED(argc)
    Q_UNUSED(argv)
    QByteArrayList words;
    int count = 0;
    wchar_t **wide = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; i < count; ++i) {
        const QString word = QString::fromWCharArray(wide[i]);
        words += word.toUtf8();
        if (!word.isValidUtf16())
            words.last() += '\xFF'; // no UTF-8 either, so that no other file is named
    }
    LocalFree(wide);
    return words;
}

bool Console::isTerminal(Stream stream)
{
    DWORD mode = 0;
    return GetConsoleMode(handleOf(stream), &mode) != 0;
}

bool Console::hasColours(Stream stream)
{
    return s_hasEscapes[stream] && qEnvironmentVariableIsEmpty("NO_COLOR");
}

int Console::columns()
{
    constexpr int usual = 80;
    CONSOLE_SCREEN_BUFFER_INFO info = {};
    if (!GetConsoleScreenBufferInfo(handleOf(Error), &info))
        return usual;
    return std::max(info.srWindow.Right - info.srWindow.Left + 1, 1);
}

bool Console::write(Stream stream, const QByteArray &bytes)
{
    const HANDLE handle = handleOf(stream);
    if (isTerminal(stream))
        return writeToTerminal(handle, bytes);
    for (qsizetype begin = 0; begin < bytes.size();) {
        DWORD written = 0;
        if (!WriteFile(handle, bytes.constData() + begin, static_cast<DWORD>(bytes.size() - begin),
                       &written, nullptr)) {
            const DWORD error = GetLastError();
            s_isPipeClosed |= stream == Output
                && (error == ERROR_BROKEN_PIPE || error == ERROR_NO_DATA
                    || error == ERROR_PIPE_NOT_CONNECTED);
            return false;
        }
        begin += written;
    }
    return true;
}

bool Console::isPipeClosed()
{
    return s_isPipeClosed;
}

bool Console::readLine(QByteArray &line)
{
    static QByteArray waiting; // behind the line that was read last
    QByteArray bytes;
    while (!waiting.contains('\n') && readSome(bytes) && !bytes.isEmpty())
        waiting += bytes;
    if (s_interrupted)
        return false;
    const auto end = waiting.indexOf('\n');
    const bool isAny = !waiting.isEmpty();
    line = end < 0 ? waiting : waiting.left(end);
    waiting = end < 0 ? QByteArray() : waiting.mid(end + 1);
    if (line.endsWith('\r'))
        line.chop(1);
    return isAny;
}

bool Console::readAll(QByteArray &bytes)
{
    QByteArray block;
    bool isRead = readSome(block);
    while (isRead && !block.isEmpty()) {
        bytes += block;
        isRead = readSome(block);
    }
    return isRead;
}

bool Console::interrupted()
{
    return s_interrupted;
}

} // namespace tarvel4
