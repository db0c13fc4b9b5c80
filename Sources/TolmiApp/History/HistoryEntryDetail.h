#pragma once

#include "Foundation/FileURL.h"

#include <QObject>
#include <QStringList>
#include <QUuid>

/// What the workspace shows of one entry, in the language of the interface.
struct HistoryEntryDetail {
    Q_GADGET
    /// False while there is nothing to show.
    Q_PROPERTY(bool isPresent MEMBER isPresent)
    Q_PROPERTY(QUuid entryID MEMBER entryID)
    Q_PROPERTY(QString date MEMBER date)
    Q_PROPERTY(QString language MEMBER language)
    /// Where the text was pasted, a fact in each line.
    Q_PROPERTY(QStringList pasteFacts MEMBER pasteFacts)
    Q_PROPERTY(HistoryEntryDetail::AudioState audioState MEMBER audioState)
    /// Name of the recording's file, with its label; empty without a recording.
    Q_PROPERTY(QString audioFile MEMBER audioFile)
    Q_PROPERTY(QString rawText MEMBER rawText)
    Q_PROPERTY(QString refinedText MEMBER refinedText)

public:
    enum class AudioState {
        /// The file that the entry names has gone.
        Missing,
        Available,
        /// The entry names no file.
        NotCaptured,
    };
    Q_ENUM(AudioState)

    bool isPresent = false;
    QUuid entryID;
    QString date;
    QString language;
    QStringList pasteFacts;
    AudioState audioState = AudioState::NotCaptured;
    FileURL audioURL;
    QString audioFile;
    QString rawText;
    QString refinedText;

    friend bool operator==(const HistoryEntryDetail &, const HistoryEntryDetail &) = default;
};
