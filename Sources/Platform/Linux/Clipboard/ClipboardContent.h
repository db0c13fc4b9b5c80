#pragma once

#include "Platform/Pasteboard.h"

#include <optional>

/// What this program has on the clipboard of an X server, by the names that X programs ask with.
///
/// Plain text in UTF-8 is offered under every name that programs know for it, whichever it came with.
class ClipboardContent {
public:
    ClipboardContent() = default;
    /// Of several items that have the same type the first one gives the data: there is but one item on X.
    explicit ClipboardContent(const std::vector<PasteboardItem> &items);
    /// A text that clipboard managers are asked to keep out of their records.
    static ClipboardContent dictated(const QString &text);

    /// The content without the further names that it is offered under.
    std::vector<PasteboardItem> items() const;
    /// Every type that is offered.
    std::vector<QString> types() const;
    /// Nothing when the type is not offered.
    std::optional<QByteArray> data(const QString &type) const;

    /// Whether clipboard managers are asked not to keep it.
    bool isSecret() const;
    /// Whether a type tells clipboard managers about the content instead of holding some of it.
    static bool isHint(const QString &type);

private:
    const QByteArray *find(const QString &type) const;
    const QByteArray *utf8Text() const;

    PasteboardItem m_item;
};

/// Which of the types that an owner offers are worth reading, and in which order, so that the best is there
/// when time runs out, and nothing secret without its mark. Left out is what describes the clipboard itself
/// or means something only while the owner lives, and all but one encoding of a picture.
std::vector<QString> clipboardTypesToRead(const std::vector<QString> &offered);
