#pragma once

#include <QString>

/// The location of a file or folder, which need not exist.
///
/// The path is absolute, except that an empty path stays empty and names no file. "~" has no special meaning.
class FileURL {
public:
    /// Names no file.
    FileURL() = default;

    /// The URL of `path`; a relative path is resolved against the current directory at once.
    explicit FileURL(const QString &path);

    /// The path without a slash at its end (the root is "/").
    const QString &path() const { return m_path; }

    /// The part after the last slash; "/" for the root, empty for the empty URL.
    QString lastPathComponent() const;

    /// The part after the last dot of the last component; empty if there is none.
    QString pathExtension() const;

    /// The same location with ".", ".." and repeated slashes removed; symbolic links are not resolved.
    FileURL standardizedFileURL() const;

    /// This URL with `component`, which may contain slashes, appended after a slash.
    FileURL appendingPathComponent(const QString &component) const;

    /// The parent folder; the root's parent is the root.
    FileURL deletingLastPathComponent() const;

    friend bool operator==(const FileURL &, const FileURL &) = default;

private:
    QString m_path;
};
