#pragma once

#include "Foundation/FileURL.h"

#include <functional>
#include <optional>

/// What the user is asked when a text is to be saved.
struct SavePanelRequest {
    QString title;
    /// Name of the file, with its suffix, as proposed.
    QString proposedName;

    friend bool operator==(const SavePanelRequest &, const SavePanelRequest &) = default;
};

/// Asks the user where a plain text is to be saved. Main thread only.
class SavePanel {
public:
    /// The file that was chosen, absent when the user thought better of it.
    using Answer = std::function<void(const std::optional<FileURL> &)>;

    virtual ~SavePanel() = default;

    /// Shows the panel over the program's windows, which wait meanwhile, and calls `answer` once, later. That
    /// a file is to be replaced has been agreed to by then.
    virtual void run(const SavePanelRequest &request, Answer answer) = 0;
};
