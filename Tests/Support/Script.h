#pragma once

#include "Foundation/FileURL.h"

#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// A folder with a script for the stand-in of whisper-cli and what the stand-in leaves.
/// ScriptedWhisperCLI.cpp lists the commands.
class Script {
public:
    explicit Script(const QStringList &commands) {
        write(modelURL(), commands.join(u'\n').toUtf8());
        write(audioURL(), {});
    }

    static FileURL binaryURL() { return FileURL(QStringLiteral(TOLMI_SCRIPTED_WHISPER_CLI)); }
    FileURL modelURL() const { return at(QStringLiteral("script")); }
    FileURL audioURL() const { return at(QStringLiteral("recording.wav")); }
    FileURL outputDirectoryURL() const { return at(QStringLiteral("transcripts/deep")); }

    /// What the stand-in wrote into the file that belongs to a command.
    QString noteOf(const QString &command) const {
        QFile file(modelURL().path() + u'.' + command);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    /// Whether the stand-in has reached its command `ready`.
    bool isReady() const { return QFile::exists(modelURL().path() + QStringLiteral(".ready")); }

    FileURL at(const QString &name) const { return FileURL(m_folder.filePath(name)); }

    static void write(const FileURL &url, const QByteArray &content) {
        QFile file(url.path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

private:
    QTemporaryDir m_folder;
};
