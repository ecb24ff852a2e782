#include "app/printtext.h"

#include <QByteArray>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace tarvel4 {

#ifdef Q_OS_WIN

namespace {

const wchar_t *wide(const QString &text)
{
    return reinterpret_cast<const wchar_t *>(text.utf16());
}

/** Where a stream goes: a program with windows is given files and pipes, and has to ask for the
 * terminal that it was started from. Null where there is none. */
HANDLE handleOf(const std::FILE *stream)
{
    const HANDLE given = GetStdHandle(stream == stderr ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE);
    if (given != nullptr && GetFileType(given) != FILE_TYPE_UNKNOWN)
        return given;
    if (!AttachConsole(ATTACH_PARENT_PROCESS))
        return nullptr;
    const HANDLE terminal =
        CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, OPEN_EXISTING, 0, nullptr);
    return terminal == INVALID_HANDLE_VALUE ? nullptr : terminal;
}

} // namespace

bool printText(std::FILE *stream, const QString &text)
{
    const HANDLE handle = handleOf(stream);
    if (handle == nullptr)
        return MessageBoxW(nullptr, wide(text), L"Tarvel4 Soft", MB_OK) != 0;
    DWORD mode = 0;
    DWORD written = 0;
    if (GetConsoleMode(handle, &mode))
        return WriteConsoleW(handle, wide(text), static_cast<DWORD>(text.size()), &written, nullptr)
            != 0;
    const QByteArray bytes = text.toUtf8();
    return WriteFile(handle, bytes.constData(), static_cast<DWORD>(bytes.size()), &written, nullptr)
        != 0;
}

#else

bool printText(std::FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toLocal8Bit();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
    return std::fflush(stream) == 0;
}

#endif

} // namespace tarvel4
