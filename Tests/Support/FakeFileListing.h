#pragma once

#include "Platform/FileListing.h"

#include <QString>

#include <set>
#include <utility>
#include <vector>

/// Files in memory that are listed in the order in which the test put them there. What is listed depends on
/// the folder in the path alone: a folder with nothing in it is empty.
class FakeFileListing final : public FileListing {
public:
    std::vector<std::pair<FileURL, FileAttributes>> items;

    /// The paths of which each operation fails with "Permission denied".
    std::set<QString> unlistable;
    std::set<QString> unreadable;
    std::set<QString> unremovable;

    /// The paths that removeItem was called with, in order, failures too.
    std::vector<QString> removals;

    std::vector<FileURL> contentsOfDirectory(const FileURL &url) const override;
    FileAttributes attributes(const FileURL &url) const override;
    /// There are no links here.
    FileAttributes attributesOfTarget(const FileURL &url) const override { return attributes(url); }
    void removeItem(const FileURL &url) override;
};
