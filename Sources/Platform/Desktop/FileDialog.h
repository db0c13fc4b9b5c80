#pragma once

#include "Foundation/FileURL.h"

#include <QStandardPaths>

#include <functional>
#include <optional>

class QFileDialog;

/// Shows `dialog`, which deletes itself afterwards, in the user's folder of that kind, else in the home
/// folder. `answer` gets the chosen file once, or nothing when the dialog was left without one. Main thread
/// only.
void showFileDialog(QFileDialog *dialog, QStandardPaths::StandardLocation folder,
    std::function<void(const std::optional<FileURL> &)> answer);
