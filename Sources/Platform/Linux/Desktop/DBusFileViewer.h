#pragma once

#include "Platform/FileViewer.h"

/// The file manager of the desktop, over the interface that file managers share; where none has it, whatever
/// the desktop opens folders with.
class DBusFileViewer final : public FileViewer {
public:
    void selectFile(const FileURL &url) override;
    void openFolder(const FileURL &url) override;
};
