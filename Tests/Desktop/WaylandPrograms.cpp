#include "Desktop/WaylandPrograms.h"

#include "Desktop/TestPrograms.h"
#include "Platform/Linux/Wayland/WaylandActiveWindow.h"
#include "Support/UntilTrue.h"

#include <gtest/gtest.h>

#include <csignal>

namespace {
QByteArray paste(const QStringList &arguments) {
    QProcess process;
    process.start(QStringLiteral("wl-paste"), arguments);
    process.waitForFinished();
    // It fails when there is nothing.
    return process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
}

void end(QProcess &process) {
    kill(pid_t(process.processId()), SIGCONT);
    process.kill();
    process.waitForFinished();
}

void setNativeEnvironment(QProcess &process) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("GDK_BACKEND"), QStringLiteral("wayland"));
    process.setProcessEnvironment(environment);
}
} // namespace

QByteArray waylandClipboard(const QString &type, bool isPrimary) {
    QStringList arguments { QStringLiteral("--no-newline"), QStringLiteral("--type"), type };
    if (isPrimary)
        arguments.append(QStringLiteral("--primary"));
    return paste(arguments);
}

QStringList waylandClipboardTypes() {
    return QString::fromUtf8(paste({ QStringLiteral("--list-types") })).split(u'\n', Qt::SkipEmptyParts);
}

WaylandCopyingProgram::WaylandCopyingProgram(const QByteArray &content, const QString &type) {
    m_process.start(
        QStringLiteral("wl-copy"), { QStringLiteral("--foreground"), QStringLiteral("--type"), type });
    EXPECT_TRUE(m_process.waitForStarted());
    m_process.write(content);
    m_process.closeWriteChannel();
    EXPECT_TRUE(untilTrue([&] { return waylandClipboard(type) == content; }));
}

WaylandCopyingProgram::~WaylandCopyingProgram() {
    end(m_process);
}

void WaylandCopyingProgram::hang() const {
    kill(pid_t(m_process.processId()), SIGSTOP);
}

WaylandProgram::WaylandProgram(
    const QString &program, const QStringList &arguments, const QString &applicationID) {
    setNativeEnvironment(m_process);
    m_process.start(program, arguments);
    EXPECT_TRUE(m_process.waitForStarted());
    EXPECT_TRUE(untilTrue([&] {
        const auto front = WaylandActiveWindow::current();
        return front && front->applicationID.compare(applicationID, Qt::CaseInsensitive) == 0;
    }));
}

WaylandProgram::~WaylandProgram() {
    end(m_process);
}

void typeOnWayland(const QStringList &arguments) {
    outputOf(QStringLiteral("wtype"), arguments);
}
