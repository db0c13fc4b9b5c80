#pragma once

#include "TolmiApp/History/HistoryEntry.h"

#include <QByteArray>
#include <QList>

#include <optional>

/// The JSON form of the history: one array of objects, without white space. HistoryWriter.cpp makes it,
/// HistoryReader.cpp reads it.
namespace HistoryCodec {

/// The entries as JSON in UTF-8, in their order. Absent when a number is not finite, which JSON cannot say.
std::optional<QByteArray> encode(const QList<HistoryEntry> &entries);

/// Puts `entry` in front of the entries of `json`, which encode() or this made. False for a number that is
/// not finite, and `json` is as it was.
bool prepend(QByteArray &json, const HistoryEntry &entry);

/// Puts `after`, or nothing if that is absent, in the place of `before` in `json`, which encode() or a
/// function here made. False when `before` is not there, and for a number that is not finite; `json` is as it
/// was then.
bool replace(QByteArray &json, const HistoryEntry &before, const std::optional<HistoryEntry> &after);

/// The entries of a whole file, in file order. Absent when anything in it is not as it must be, so that a
/// history is never read in part.
///
/// Of a repeated key the first value counts; unknown keys are passed over, with values nested at most 512
/// deep. A byte order mark at the start is allowed.
std::optional<QList<HistoryEntry>> decode(QByteArray json);

} // namespace HistoryCodec
