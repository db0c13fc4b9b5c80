#pragma once

#include "TolmiApp/Settings/AppLanguage.h"

#include <QObject>
#include <QString>

/// The texts of the dialog about updates, in English and in Romanian. They stand apart from the interface's
/// table because another updater brings a dialog of its own, with its own words.
namespace UpdateTexts {
Q_NAMESPACE

/// `%1` stands for a version where the comment says so.
enum class Key {
    windowTitle,
    checkingTitle,
    /// The new version.
    foundTitle,
    /// The installed version.
    foundHint,
    releaseNotes,
    download,
    later,
    upToDateTitle,
    /// The installed version.
    upToDateHint,
    failedTitle,
    failedHint,
    tryAgain,
    /// The new version.
    downloadingTitle,
    downloadProgress,
    /// The new version.
    downloadedTitle,
    downloadedHint,
    downloadedFile,
    showInFolder,
    cancel,
    close,
};
Q_ENUM_NS(Key)

/// The text of `key` in `language`.
QString text(Key key, AppLanguage language);

/// The same with `version` in the place of its `%1`.
QString text(Key key, AppLanguage language, const QString &version);

} // namespace UpdateTexts
