#pragma once

#include "Foundation/FileURL.h"

#include <QStringList>

#include <functional>
#include <optional>

/// What the user is asked when a file is to be opened.
struct OpenPanelRequest {
    QString title;
    /// The endings of the files that can be chosen, in lower case, without the dot.
    QStringList fileExtensions;

    friend bool operator==(const OpenPanelRequest &, const OpenPanelRequest &) = default;
};

/// Asks the user for one file that is there. Main thread only.
class OpenPanel {
public:
    /// The file that was chosen, absent when the user thought better of it.
    using Answer = std::function<void(const std::optional<FileURL> &)>;

    virtual ~OpenPanel() = default;

    /// Shows the panel over the program's windows, which wait meanwhile, and calls `answer` once, later.
    virtual void run(const OpenPanelRequest &request, Answer answer) = 0;
};
