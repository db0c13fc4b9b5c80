#pragma once

#include <QString>

/// The place of a file or folder as a value; says nothing about whether anything is there.
///
/// The path is absolute, save for the URL of an empty path, which stays empty and names no file. "~" has no
/// meaning.
class FileURL {
public:
    /// Names no file.
    FileURL() = default;

    /// The URL of `path`; a relative one counts from the current directory of this moment.
    explicit FileURL(const QString &path);

    /// The path without a slash at its end (the root is "/").
    const QString &path() const { return m_path; }

    /// The text behind the last slash; "/" for the root, empty for the empty URL.
    QString lastPathComponent() const;

    /// The text behind the last dot of the last component, without the dot; empty where there is none.
    QString pathExtension() const;

    /// The same place with "." and ".." folded and repeated slashes removed; links stay as they are.
    FileURL standardizedFileURL() const;

    /// This URL with `component`, which may hold several parts, added behind a slash.
    FileURL appendingPathComponent(const QString &component) const;

    /// The folder that holds this place; the root gives itself.
    FileURL deletingLastPathComponent() const;

    friend bool operator==(const FileURL &, const FileURL &) = default;

private:
    QString m_path;
};
