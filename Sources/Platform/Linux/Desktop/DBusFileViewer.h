#pragma once

#include "Platform/FileViewer.h"

/// The desktop's file manager through org.freedesktop.FileManager1; if unavailable, the default application
/// for folders.
class DBusFileViewer final : public FileViewer {
public:
    void selectFile(const FileURL &url) override;
    void openFolder(const FileURL &url) override;
};
