#pragma once

#include "TolmiApp/History/HistoryEntry.h"
#include "TolmiApp/Settings/AppLanguage.h"

#include <QList>

/// The history as a plain text to keep or share.
namespace HistoryExportFormatter {

/// One block for each entry, in the order given; empty without entries. Dates stand in UTC, cut to whole
/// seconds.
QString format(const QList<HistoryEntry> &entries, AppLanguage language = AppLanguage::English);

} // namespace HistoryExportFormatter
