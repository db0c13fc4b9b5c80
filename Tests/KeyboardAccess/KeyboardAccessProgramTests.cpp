#include "KeyboardAccess/SystemPrograms.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
using testing::HasSubstr;
using testing::UnorderedElementsAre;

class SystemProgramsTests : public testing::Test {
protected:
    QByteArray contentOf(const QString &name) {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    /// What a program of the system wrote with its output sent into a file.
    QByteArray outputOf(const QString &command) {
        const QString path = folder.filePath(QStringLiteral("output"));
        EXPECT_EQ(
            SystemPrograms::run("sh", { "-c", (command + QStringLiteral(" >") + path).toStdString() }), 0);
        return contentOf(QStringLiteral("output"));
    }

    QTemporaryDir folder;
};

TEST_F(SystemProgramsTests, GetsAnEnvironmentOfOurOwn) {
    QFile stranger(folder.filePath(QStringLiteral("env")));
    EXPECT_TRUE(stranger.open(QIODevice::WriteOnly));
    stranger.write("#!/bin/sh\necho stranger\n");
    stranger.close();
    EXPECT_TRUE(stranger.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    const QByteArray searchPath = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(folder.path()));
    qputenv("LD_AUDIT", "/tmp/stranger.so");
    qputenv("ENV", "/tmp/stranger.sh");
    const QByteArray output = outputOf(QStringLiteral("env"));
    qputenv("PATH", searchPath);
    qunsetenv("LD_AUDIT");
    qunsetenv("ENV");
    QByteArrayList lines = output.trimmed().split('\n');
    // The shell's own.
    lines.removeIf([](const QByteArray &line) {
        return line.startsWith("PWD=") || line.startsWith("SHLVL=") || line.startsWith("_=");
    });
    EXPECT_THAT(lines, UnorderedElementsAre("PATH=/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL=C"));
}

TEST_F(SystemProgramsTests, GetsNoDescriptorOfOurs) {
    const int ours = ::open("/", O_RDONLY | O_DIRECTORY);
    ASSERT_GT(ours, 2);
    const QByteArray output = outputOf(
        QStringLiteral("if [ -e /proc/self/fd/%1 ]; then echo seen; else echo none; fi").arg(ours));
    ::close(ours);
    EXPECT_EQ(output, "none\n");
}

TEST_F(SystemProgramsTests, TellsTheExitStatus) {
    EXPECT_EQ(SystemPrograms::run("sh", { "-c", "exit 7" }), 7);
    EXPECT_EQ(SystemPrograms::run("sh", { "-c", "kill -9 $$" }), -1);
    EXPECT_EQ(SystemPrograms::run("no-such-program", {}), -1);
    EXPECT_EQ(SystemPrograms::run("sh", { "-c", "read line" }), 1);
}

/// A copy of the real program, run by a user without the administrator's rights.
class KeyboardAccessProgramTests : public testing::Test {
protected:
    KeyboardAccessProgramTests() {
        EXPECT_EQ(::chmod(QFile::encodeName(folder.path()).constData(), 0755), 0);
        EXPECT_TRUE(QFile::copy(QStringLiteral(TOLMI_KEYBOARD_ACCESS), program));
        EXPECT_EQ(::chmod(QFile::encodeName(program).constData(), 0755), 0);
    }

    int run(const QStringList &arguments, const std::function<void()> &prepare = {}) {
        QProcess process;
        process.setChildProcessModifier([&prepare] {
            constexpr unsigned nobody = 65534;
            if (::geteuid() == 0 && ::setuid(nobody) != 0)
                ::_exit(99);
            if (prepare)
                prepare();
        });
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished(60000));
        output = process.readAllStandardOutput().toStdString();
        errors = process.readAllStandardError().toStdString();
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QTemporaryDir folder;
    QString program = folder.filePath(QStringLiteral("tolmi-keyboard-access"));
    std::string output;
    std::string errors;
};

TEST_F(KeyboardAccessProgramTests, TakesOneWordOfThree) {
    const QList<QStringList> misuses { {}, { QStringLiteral("--help") }, { QStringLiteral("Install") },
        { QString() }, { QStringLiteral("install"), QStringLiteral("/tmp/x") },
        { QStringLiteral("status"), QStringLiteral("status") }, { QStringLiteral("install;id") } };
    for (const QStringList &arguments : misuses) {
        EXPECT_EQ(run(arguments), 2) << arguments.join(' ').toStdString();
        EXPECT_THAT(errors, HasSubstr("Usage"));
        EXPECT_EQ(output, "");
    }
}

TEST_F(KeyboardAccessProgramTests, NeedsTheAdministrator) {
    for (const char *command : { "install", "remove" }) {
        EXPECT_EQ(run({ QString::fromLatin1(command) }), 1);
        EXPECT_THAT(errors, HasSubstr("pkexec"));
    }
}

TEST_F(KeyboardAccessProgramTests, EverybodyMayAskForTheState) {
    const int status = run({ QStringLiteral("status") });
    EXPECT_TRUE((status == 0 && output == "installed\n") || (status == 3 && output.ends_with("\n")))
        << output;
}

TEST_F(KeyboardAccessProgramTests, MissingStandardStreamsDoNoHarm) {
    const int status = run({ QStringLiteral("status") }, [] {
        ::close(0);
        ::close(1);
        ::close(2);
    });
    EXPECT_TRUE(status == 0 || status == 3) << status;
    EXPECT_EQ(run({}, [] { ::close(2); }), 2);
}
} // namespace
