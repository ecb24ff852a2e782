// Linked into each test of the window on Windows: settings of the process's own, which end with it,
// a data folder apart from the user's, and the file dialogs that the tests know.

#include <QCoreApplication>
#include <QStandardPaths>
#include <QString>

#include <array>
#include <windows.h>

namespace {

constexpr wchar_t folders[] =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
constexpr wchar_t data[] = L"Local AppData";

HKEY keyIn(HKEY parent, const wchar_t *name)
{
    HKEY key = nullptr;
    const bool isMade =
        RegCreateKeyExW(parent, name, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr)
        == ERROR_SUCCESS;
    return isMade ? key : nullptr;
}

/** What stands in for the user's part of the registry. */
class OwnStore
{
public:
    OwnStore()
        : m_name(QStringLiteral("Software\\kvaro test %1").arg(GetCurrentProcessId()))
    {
        std::array<wchar_t, MAX_PATH> folder{}; // a test's own, where the runner has said so
        DWORD size = sizeof folder;
        const bool hasFolder =
            RegGetValueW(HKEY_CURRENT_USER, folders, data, RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND,
                         nullptr, folder.data(), &size)
            == ERROR_SUCCESS;
        HKEY store = keyIn(HKEY_CURRENT_USER, name());
        if (store == nullptr || RegOverridePredefKey(HKEY_CURRENT_USER, store) != ERROR_SUCCESS)
            qFatal("There are no settings to be used without touching the user's.");
        if (hasFolder)
            RegSetValueExW(keyIn(store, folders), data, 0, REG_EXPAND_SZ,
                           reinterpret_cast<const BYTE *>(folder.data()), size);
        QStandardPaths::setTestModeEnabled(true);
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    }
    ~OwnStore()
    {
        RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        RegDeleteTreeW(HKEY_CURRENT_USER, name());
    }
    Q_DISABLE_COPY(OwnStore)

private:
    const wchar_t *name() const { return reinterpret_cast<const wchar_t *>(m_name.utf16()); }

    const QString m_name;
};

const OwnStore store;

} // namespace
