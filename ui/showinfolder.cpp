#include "ui/showinfolder.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

#if defined(Q_OS_WIN)
#include <QDir>
#include <QProcess>

#include <array>
#include <windows.h>
#elif defined(QT_DBUS_LIB)
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#endif

namespace tarvel4 {

namespace {

void openFolderOf(const QString &path)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).absolutePath()));
}

} // namespace

#if defined(Q_OS_WIN)

QString explorerProgram()
{
    std::array<wchar_t, MAX_PATH> folder{};
    GetSystemWindowsDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
    return QDir(QString::fromWCharArray(folder.data())).filePath(QStringLiteral("explorer.exe"));
}

void showInFolder(const QString &path)
{
    if (!QFileInfo::exists(path))
        return openFolderOf(path);
    QProcess explorer;
    explorer.setProgram(explorerProgram());
    // which takes the quotation marks around the name alone
    explorer.setNativeArguments(
        QStringLiteral("/select,\"%1\"").arg(QDir::toNativeSeparators(path)));
    if (!explorer.startDetached())
        openFolderOf(path);
}

#elif defined(QT_DBUS_LIB)

void showInFolder(const QString &path)
{
    const QString manager = QStringLiteral("org.freedesktop.FileManager1");
    QDBusMessage show =
        QDBusMessage::createMethodCall(manager, QStringLiteral("/org/freedesktop/FileManager1"),
                                       manager, QStringLiteral("ShowItems"));
    const QStringList items{QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded())};
    show.setArguments({items, QString()});
    // one that has to be started first takes its time, and the window must not wait for it
    auto *reply = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(show), qApp);
    const auto finish = [path](QDBusPendingCallWatcher *watcher) {
        if (watcher->isError())
            openFolderOf(path);
        watcher->deleteLater();
    };
    if (reply->isFinished()) // as it is at once where there is no bus
        finish(reply);
    else
        QObject::connect(reply, &QDBusPendingCallWatcher::finished, reply, finish);
}

#else

void showInFolder(const QString &path)
{
    openFolderOf(path);
}

#endif

} // namespace tarvel4
