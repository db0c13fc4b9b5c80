#pragma once

#include <QString>

#include <optional>

/// Decides which of several sources holds the dictation key: several keyboards, the desktop's key bindings,
/// other programs. The source that was pressed first owns the press until its own release; meanwhile nothing
/// that the others do counts, so no press starts twice, and none is left without its release.
///
/// A source that goes while it owns the press releases it.
class DictationKeySources {
public:
    /// Names a source.
    using Source = QString;

    /// Whether the key goes down by this press. A press of the owner does not count again.
    bool press(const Source &source);

    /// Whether the key comes up by this release.
    bool release(const Source &source);

    /// Who holds the key; absent while nobody does.
    const std::optional<Source> &owner() const { return m_owner; }

private:
    std::optional<Source> m_owner;
};
