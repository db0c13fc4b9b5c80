#pragma once

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

/// The type of UTF-8 plain text, supported by every clipboard and text field.
inline const QString pasteboardTextType = QStringLiteral("text/plain;charset=utf-8");

/// One clipboard item with all its representations, in the owner's order.
struct PasteboardItem {
    std::vector<std::pair<QString, QByteArray>> representations;

    friend bool operator==(const PasteboardItem &, const PasteboardItem &) = default;
};

/// The clipboard. Every operation has a time limit; what could not be read by then is omitted. Main thread
/// only.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    /// Starts reading the content in the background for a later items(). Never waits.
    virtual void readAhead() = 0;

    /// The current content; items without readable representations are omitted. The hint that asks clipboard
    /// managers not to store a content is one of its representations.
    virtual std::vector<PasteboardItem> items() = 0;

    /// Replaces the content with a dictated text, marked so that clipboard managers do not store it. False if
    /// that failed and the old content is still there.
    [[nodiscard]] virtual bool setDictatedText(const QString &text) = 0;

    /// Whether the clipboard still contains the dictated text.
    virtual bool holdsDictatedText() = 0;

    /// Replaces the content with `items`, which are marked only if one of them contains the hint.
    virtual void setItems(const std::vector<PasteboardItem> &items) = 0;

    /// Restores the `items` that a dictated text has replaced. If `items` is empty, the dictated text stays.
    virtual void restore(const std::vector<PasteboardItem> &items) = 0;

    /// Hands the content to the clipboard manager, if there is one and this program still owns the clipboard,
    /// so that it outlives the program. A content replaced by a dictated text is restored first; a content
    /// that managers are asked not to store is not handed over.
    virtual void handOver() = 0;
};
