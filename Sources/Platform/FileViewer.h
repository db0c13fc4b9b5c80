#pragma once

#include "Foundation/FileURL.h"

/// The program in which the user looks at folders. It answers in its own time, and a desktop without one does
/// nothing. Main thread only.
class FileViewer {
public:
    virtual ~FileViewer() = default;

    /// Opens the folder of the file, with the file selected where the program can do that.
    virtual void selectFile(const FileURL &url) = 0;

    virtual void openFolder(const FileURL &url) = 0;
};
