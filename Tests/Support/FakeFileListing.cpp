#include "Support/FakeFileListing.h"

#include "Foundation/Error.h"

#include <algorithm>
#include <cerrno>

namespace {
void refuse(const std::set<QString> &refused, const FileURL &url) {
    if (refused.count(url.path()) > 0)
        throw SystemError::fromErrno(EACCES, url.path());
}

template <typename Items>
auto find(Items &items, const FileURL &url) {
    const auto found
        = std::find_if(items.begin(), items.end(), [&url](const auto &item) { return item.first == url; });
    if (found == items.end())
        throw SystemError::fromErrno(ENOENT, url.path());
    return found;
}
} // namespace

std::vector<FileURL> FakeFileListing::contentsOfDirectory(const FileURL &url) const {
    refuse(unlistable, url);
    std::vector<FileURL> content;
    for (const auto &[item, attributes] : items) {
        if (item.deletingLastPathComponent() == url && !item.lastPathComponent().startsWith(u'.'))
            content.push_back(item);
    }
    return content;
}

FileAttributes FakeFileListing::attributes(const FileURL &url) const {
    refuse(unreadable, url);
    return find(items, url)->second;
}

void FakeFileListing::removeItem(const FileURL &url) {
    removals.push_back(url.path());
    refuse(unremovable, url);
    items.erase(find(items, url));
}
