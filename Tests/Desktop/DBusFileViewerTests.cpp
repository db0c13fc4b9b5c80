#include "Platform/Linux/Desktop/DBusFileViewer.h"
#include "Support/FileViewerContract.h"
#include "Support/UntilTrue.h"

#include <QDBusConnection>
#include <QDesktopServices>
#include <QUrl>

namespace {
const QString busName = QStringLiteral("org.freedesktop.FileManager1");

/// A file manager on the bus that writes down what it is asked for.
class FileManagerOnBus : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    FileManagerOnBus() {
        EXPECT_TRUE(m_bus.registerObject(
            QStringLiteral("/org/freedesktop/FileManager1"), this, QDBusConnection::ExportAllSlots));
        EXPECT_TRUE(m_bus.registerService(busName));
    }
    ~FileManagerOnBus() override {
        m_bus.unregisterService(busName);
        QDBusConnection::disconnectFromBus(m_bus.name());
    }

    QStringList calls;

public Q_SLOTS:
    void ShowItems(const QStringList &urls, const QString &) { record("selectFile ", urls); }
    void ShowFolders(const QStringList &urls, const QString &) { record("openFolder ", urls); }

private:
    void record(const char *call, const QStringList &urls) {
        calls.append(QString::fromLatin1(call) + QUrl(urls.value(0)).toLocalFile());
    }

    // Of its own: a call to the connection that makes it would not go over the bus.
    QDBusConnection m_bus
        = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("file manager"));
};

class MadeReal {
public:
    FileViewer &viewer() { return m_viewer; }
    QString shown() {
        EXPECT_TRUE(untilTrue([this] { return !m_manager.calls.isEmpty(); }));
        return m_manager.calls.value(0);
    }

private:
    FileManagerOnBus m_manager;
    DBusFileViewer m_viewer;
};

/// Stands for whatever the desktop opens folders with.
class FolderOpener : public QObject {
    Q_OBJECT

public:
    FolderOpener() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~FolderOpener() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

    QString next() {
        EXPECT_TRUE(untilTrue([this] { return !m_folders.isEmpty(); }));
        return m_folders.isEmpty() ? QString() : m_folders.takeFirst();
    }

public Q_SLOTS:
    void open(const QUrl &url) { m_folders.append(url.toLocalFile()); }

private:
    QStringList m_folders;
};
} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Desktop, FileViewerContract, MadeReal);

TEST(DBusFileViewer, WithoutAFileManagerTheFolderIsOpened) {
    FolderOpener opener;
    DBusFileViewer viewer;
    viewer.selectFile(FileURL(QStringLiteral("/tmp/folder/a.wav")));
    EXPECT_EQ(opener.next(), QStringLiteral("/tmp/folder"));
    viewer.openFolder(FileURL(QStringLiteral("/tmp/other")));
    EXPECT_EQ(opener.next(), QStringLiteral("/tmp/other"));
}

#include "DBusFileViewerTests.moc"
