#pragma once

#include "Platform/FileViewer.h"

#include <QStringList>

/// Writes down what the user would be shown.
class FakeFileViewer final : public FileViewer {
public:
    void selectFile(const FileURL &url) override { calls.append(QStringLiteral("selectFile ") + url.path()); }
    void openFolder(const FileURL &url) override { calls.append(QStringLiteral("openFolder ") + url.path()); }

    QStringList calls;
};
