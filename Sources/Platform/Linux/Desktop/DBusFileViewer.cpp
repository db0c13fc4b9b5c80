#include "Platform/Linux/Desktop/DBusFileViewer.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>
#include <QUrl>

namespace {
/// Calls `method` of the file manager with `url`; if that fails, opens `folder` with the desktop's default.
void show(const QString &method, const FileURL &url, const FileURL &folder) {
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"), QStringLiteral("org.freedesktop.FileManager1"),
        method);
    // The second argument is a startup id, which X11 needs only to raise windows of other desktops.
    call << QStringList(QUrl::fromLocalFile(url.path()).toString(QUrl::FullyEncoded)) << QString();
    // The call may take long, because the bus may have to start the file manager first.
    auto *watcher = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(call), QCoreApplication::instance());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, folder] {
        watcher->deleteLater();
        if (watcher->isError())
            QDesktopServices::openUrl(QUrl::fromLocalFile(folder.path()));
    });
}
} // namespace

void DBusFileViewer::selectFile(const FileURL &url) {
    show(QStringLiteral("ShowItems"), url, url.deletingLastPathComponent());
}

void DBusFileViewer::openFolder(const FileURL &url) {
    show(QStringLiteral("ShowFolders"), url, url);
}
