#pragma once

#include "Foundation/FileURL.h"

#include <QStringList>

#include <functional>
#include <optional>

/// The options of an open dialog.
struct OpenPanelRequest {
    QString title;
    /// The extensions of the files that can be chosen, in lower case, without the dot.
    QStringList fileExtensions;

    friend bool operator==(const OpenPanelRequest &, const OpenPanelRequest &) = default;
};

/// Asks the user for an existing file. Main thread only.
class OpenPanel {
public:
    /// The chosen file; absent if the user cancelled.
    using Answer = std::function<void(const std::optional<FileURL> &)>;

    virtual ~OpenPanel() = default;

    /// Shows the dialog, modal to the program's windows, and calls `answer` once, later.
    virtual void run(const OpenPanelRequest &request, Answer answer) = 0;
};
