#pragma once

#include "Foundation/FileURL.h"

/// The desktop's file manager. Calls return without waiting for it and do nothing if there is none. Main
/// thread only.
class FileViewer {
public:
    virtual ~FileViewer() = default;

    /// Opens the folder of the file, with the file selected if the file manager supports that.
    virtual void selectFile(const FileURL &url) = 0;

    virtual void openFolder(const FileURL &url) = 0;
};
