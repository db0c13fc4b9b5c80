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

    /// What is there now; items without any readable representation are left out.
    virtual std::vector<PasteboardItem> items() = 0;

    /// Replaces the content by a dictated text, marked so that clipboard managers do not keep it.
    virtual void setDictatedText(const QString &text) = 0;

    /// Replaces the content by `items`, unmarked.
    virtual void setItems(const std::vector<PasteboardItem> &items) = 0;

    /// Gives the content to the clipboard manager, if there is one and the content is still this program's,
    /// so that it outlives the program.
    virtual void handOver() = 0;
};
