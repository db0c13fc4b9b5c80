#pragma once

#include "Foundation/FileURL.h"

#include <QStandardPaths>

#include <functional>
#include <optional>

class QFileDialog;

/// Shows `dialog`, which deletes itself when closed, in the user's folder of that kind, else in the home
/// folder. `answer` is called once, with the chosen file or with nothing if the user cancels. Main thread
/// only.
void showFileDialog(QFileDialog *dialog, QStandardPaths::StandardLocation folder,
    std::function<void(const std::optional<FileURL> &)> answer);
