#include "Platform/Linux/Clipboard/ClipboardContent.h"

#include <algorithm>
#include <array>

namespace {
/// Text in UTF-8, then the other names that it is offered under.
constexpr std::array utf8TextTypes { "text/plain;charset=utf-8", "UTF8_STRING" };
constexpr std::array textTypes { "text/plain;charset=utf-8", "UTF8_STRING", "text/plain", "TEXT", "STRING" };
constexpr std::array lateTypes { "text/plain", "TEXT", "STRING", "COMPOUND_TEXT" };

/// Clipboard managers leave out what says "secret" here; CopyQ has a type of its own for that.
const QString hintType = QStringLiteral("x-kde-passwordManagerHint");
const QByteArray secretHint = QByteArrayLiteral("secret");
const QString copyqHiddenType = QStringLiteral("application/x-copyq-hidden");

constexpr std::array typesWithoutContent { "TARGETS", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS", "DELETE",
    "INSERT_SELECTION", "INSERT_PROPERTY", "PIXMAP", "BITMAP", "DRAWABLE", "COLORMAP", "FOREGROUND",
    "BACKGROUND", "WINDOW", "CLIENT_WINDOW", "HOST_NAME", "HOSTNAME", "IP_ADDRESS", "OWNER_OS", "PROCESS",
    "USER", "CLASS", "NAME", "LENGTH", "LIST_LENGTH", "SPAN", "CHARACTER_POSITION", "LINE_NUMBER",
    "COLUMN_NUMBER", "TASK", "MODULE", "PROCEDURE", "ATOM", "ATOM_PAIR", "application/x-qt-image" };

constexpr std::array losslessImageTypes { "image/png", "image/tiff", "image/bmp", "image/x-bmp",
    "image/x-ms-bmp" };

template <size_t count>
bool contains(const std::array<const char *, count> &names, const QString &name) {
    return std::ranges::any_of(names, [&name](const char *known) { return name == QLatin1String(known); });
}

bool isImage(const QString &type) {
    // Drawings are no encoding of the same picture: a drawing program needs its own format back.
    return type.startsWith(QLatin1String("image/")) && !type.contains(QLatin1String("svg"));
}

/// The encoding that keeps the picture best; empty when there is no picture.
QString bestImage(const std::vector<QString> &offered) {
    QString best;
    for (const QString &type : offered) {
        if (!isImage(type))
            continue;
        if (contains(losslessImageTypes, type.toLower()))
            return type;
        if (best.isEmpty())
            best = type;
    }
    return best;
}

int readingRank(const QString &type) {
    if (ClipboardContent::isHint(type))
        return 0;
    if (contains(utf8TextTypes, type))
        return 1;
    if (contains(lateTypes, type))
        return 4;
    return isImage(type) ? 3 : 2;
}
} // namespace

ClipboardContent::ClipboardContent(const std::vector<PasteboardItem> &items) {
    for (const PasteboardItem &item : items) {
        for (const auto &representation : item.representations) {
            if (!find(representation.first))
                m_item.representations.push_back(representation);
        }
    }
}

ClipboardContent ClipboardContent::dictated(const QString &text) {
    return ClipboardContent({ PasteboardItem { { { pasteboardTextType, text.toUtf8() },
        { hintType, secretHint }, { copyqHiddenType, QByteArrayLiteral("1") } } } });
}

std::vector<PasteboardItem> ClipboardContent::items() const {
    return m_item.representations.empty() ? std::vector<PasteboardItem>() : std::vector { m_item };
}

std::vector<QString> ClipboardContent::types() const {
    std::vector<QString> types;
    for (const auto &[type, data] : m_item.representations)
        types.push_back(type);
    if (utf8Text()) {
        for (const char *name : textTypes) {
            const QString type = QLatin1String(name);
            if (!find(type))
                types.push_back(type);
        }
    }
    return types;
}

std::optional<QByteArray> ClipboardContent::data(const QString &type) const {
    if (const QByteArray *data = find(type))
        return *data;
    const QByteArray *text = utf8Text();
    if (!text || !contains(textTypes, type))
        return {};
    return type == QLatin1String("STRING") ? QString::fromUtf8(*text).toLatin1() : *text;
}

bool ClipboardContent::isSecret() const {
    const QByteArray *hint = find(hintType);
    return hint && *hint == secretHint;
}

bool ClipboardContent::isHint(const QString &type) {
    return type == hintType || type == copyqHiddenType;
}

const QByteArray *ClipboardContent::find(const QString &type) const {
    const auto &representations = m_item.representations;
    const auto found = std::ranges::find(representations, type, &std::pair<QString, QByteArray>::first);
    return found == representations.end() ? nullptr : &found->second;
}

const QByteArray *ClipboardContent::utf8Text() const {
    for (const char *type : utf8TextTypes) {
        if (const QByteArray *data = find(QLatin1String(type)))
            return data;
    }
    return nullptr;
}

std::vector<QString> clipboardTypesToRead(const std::vector<QString> &offered) {
    const QString image = bestImage(offered);
    const bool hasUtf8Text
        = std::ranges::any_of(offered, [](const QString &type) { return contains(utf8TextTypes, type); });
    std::vector<QString> types;
    for (const QString &type : offered) {
        const bool isOtherImage = isImage(type) && type != image;
        const bool isSynonym = hasUtf8Text && type == QLatin1String("TEXT");
        if (!isOtherImage && !isSynonym && !contains(typesWithoutContent, type)
            && std::ranges::find(types, type) == types.end())
            types.push_back(type);
    }
    std::ranges::stable_sort(types, {}, &readingRank);
    return types;
}
