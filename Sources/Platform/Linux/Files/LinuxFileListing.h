#pragma once

#include "Platform/FileListing.h"

/// Folders of a Linux file system. Files whose names start with a dot are hidden.
class LinuxFileListing final : public FileListing {
public:
    std::vector<FileURL> contentsOfDirectory(const FileURL &url) const override;
    FileAttributes attributes(const FileURL &url) const override;
    FileAttributes attributesOfTarget(const FileURL &url) const override;
    void removeItem(const FileURL &url) override;
};
