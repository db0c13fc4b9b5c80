#pragma once

#include "TolmiApp/Contracts/FinishedDictation.h"

#include <QUuid>

/// The record of one finished dictation. Only the pin changes after it was made.
struct HistoryEntry : FinishedDictation {
    QUuid id = QUuid::createUuid();
    /// When the entry was made.
    Date timestamp;
    bool isPinned = false;

    friend bool operator==(const HistoryEntry &, const HistoryEntry &) = default;
};

// Lets a list of entries grow at its front by moving memory instead of strings.
Q_DECLARE_TYPEINFO(HistoryEntry, Q_RELOCATABLE_TYPE);
