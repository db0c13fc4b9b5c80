#pragma once

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

/// The type of plain text as UTF-8, which every clipboard takes and every text field understands.
inline const QString pasteboardTextType = QStringLiteral("text/plain;charset=utf-8");

/// One thing on the clipboard in all its representations, in the owner's order.
struct PasteboardItem {
    std::vector<std::pair<QString, QByteArray>> representations;

    friend bool operator==(const PasteboardItem &, const PasteboardItem &) = default;
};

/// The clipboard. Every operation takes a bounded time; what could not be read by then is left out. Main
/// thread only.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    /// Begins to read what is there, so that items() finds it. Waits for nothing.
    virtual void readAhead() = 0;

    /// What is there now; items without any readable representation are left out. What asks clipboard
    /// managers not to keep a content is one of its representations.
    virtual std::vector<PasteboardItem> items() = 0;

    /// Replaces the content by a dictated text, marked so that clipboard managers do not keep it. Whether
    /// that took: if not, programs still find what was there before.
    [[nodiscard]] virtual bool setDictatedText(const QString &text) = 0;

    /// Whether programs would find the dictated text now.
    virtual bool holdsDictatedText() = 0;

    /// Replaces the content by `items`, which are marked only if one of them says so.
    virtual void setItems(const std::vector<PasteboardItem> &items) = 0;

    /// Brings back the `items` that a dictated text has displaced. Nothing in place of it leaves it there.
    virtual void restore(const std::vector<PasteboardItem> &items) = 0;

    /// Gives the content to the clipboard manager, if there is one and the content is still this program's,
    /// so that it outlives the program. What a dictated text displaces comes back first; a content that
    /// managers are asked not to keep is not given to them.
    virtual void handOver() = 0;
};
