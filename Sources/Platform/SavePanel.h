#pragma once

#include "Foundation/FileURL.h"

#include <functional>
#include <optional>

/// The options of a save dialog.
struct SavePanelRequest {
    QString title;
    /// The proposed file name, with suffix.
    QString proposedName;

    friend bool operator==(const SavePanelRequest &, const SavePanelRequest &) = default;
};

/// Asks the user where to save a plain text file. Main thread only.
class SavePanel {
public:
    /// The chosen file; absent if the user cancelled.
    using Answer = std::function<void(const std::optional<FileURL> &)>;

    virtual ~SavePanel() = default;

    /// Shows the dialog, modal to the program's windows, and calls `answer` once, later. The dialog itself
    /// confirms that an existing file may be replaced.
    virtual void run(const SavePanelRequest &request, Answer answer) = 0;
};
