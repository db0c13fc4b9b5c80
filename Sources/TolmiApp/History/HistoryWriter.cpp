// The writing half of HistoryCodec.

#include "TolmiApp/History/HistoryCodec.h"
#include "TolmiApp/History/HistoryFields.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace {
/// Appends to a buffer whose room was made beforehand, since a history of years is written at every change.
class Encoder {
public:
    std::optional<QByteArray> encode(const QList<HistoryEntry> &entries) {
        appendLiteral("[");
        for (const HistoryEntry &entry : entries) {
            makeRoom(greatestSize(entry));
            if (&entry != &entries.front())
                appendLiteral(",");
            append(entry);
        }
        makeRoom(1);
        appendLiteral("]");
        m_json.truncate(usedSize());
        return m_isFinite ? std::optional(std::move(m_json)) : std::nullopt;
    }

private:
    qsizetype usedSize() const { return m_next - m_json.constData(); }

    void makeRoom(qsizetype size) {
        const qsizetype used = usedSize();
        if (m_json.size() - used >= size)
            return;
        m_json.resize(m_json.size() * 2 + size);
        m_next = m_json.data() + used;
    }

    static qsizetype greatestSize(const HistoryEntry &entry) {
        const auto lengthOf = [](const std::optional<QString> &text) { return text ? text->size() : 0; };
        const qsizetype units = entry.rawText.size() + entry.refinedText.size() + entry.language.size()
            + lengthOf(entry.pasteTargetAppName) + lengthOf(entry.pasteTargetBundleID)
            + lengthOf(entry.audioFileRelativePath);
        constexpr qsizetype keysAndNumbers = 512;
        constexpr qsizetype longestEscape = 6;
        return keysAndNumbers + units * longestEscape;
    }

    void append(const HistoryEntry &entry) {
        appendLiteral("{\"id\":\"");
        append(entry.id);
        appendLiteral("\"");
        append(HistoryField::Timestamp, entry.timestamp.secondsSinceReferenceDate);
        append(HistoryField::RawText, entry.rawText);
        append(HistoryField::RefinedText, entry.refinedText);
        append(HistoryField::Language, entry.language);
        appendPresent(HistoryField::DurationSeconds, entry.durationSeconds);
        appendPresent(HistoryField::PasteTargetAppName, entry.pasteTargetAppName);
        appendPresent(HistoryField::PasteTargetBundleID, entry.pasteTargetBundleID);
        if (entry.pasteTimestamp)
            append(HistoryField::PasteTimestamp, entry.pasteTimestamp->secondsSinceReferenceDate);
        appendPresent(HistoryField::AudioFileRelativePath, entry.audioFileRelativePath);
        append(HistoryField::QualityPass, rawValue(entry.qualityPass));
        appendKey(HistoryField::IsPinned);
        appendLiteral(entry.isPinned ? "true}" : "false}");
    }

    template <typename Value>
    void appendPresent(HistoryField field, const std::optional<Value> &value) {
        if (value)
            append(field, *value);
    }

    void append(HistoryField field, const QString &text) {
        appendKey(field);
        appendLiteral("\"");
        for (qsizetype index = 0; index < text.size(); ++index) {
            const char16_t unit = text[index].unicode();
            if (unit >= 0x80)
                index += appendBeyondAscii(unit, index + 1 < text.size() ? text[index + 1].unicode() : u'\0');
            else if (isEscaped(char(unit)))
                appendEscape(char(unit));
            else
                put(unit);
        }
        appendLiteral("\"");
    }

    void append(HistoryField field, double number) {
        m_isFinite = m_isFinite && std::isfinite(number);
        appendKey(field);
        // Numbers of everyday size are written without an exponent, even where that is longer.
        const double size = std::abs(number);
        const bool isPlain = size == 0 || (size >= 1e-4 && size < 1e16);
        const auto format = isPlain ? std::chars_format::fixed : std::chars_format::scientific;
        constexpr qsizetype longestNumber = 32;
        m_next = std::to_chars(m_next, m_next + longestNumber, number, format).ptr;
    }

    void append(const QUuid &id) {
        appendHexadecimal(id.data1, 8);
        appendLiteral("-");
        appendHexadecimal(id.data2, 4);
        appendLiteral("-");
        appendHexadecimal(id.data3, 4);
        appendLiteral("-");
        for (size_t index = 0; index < 8; ++index) {
            if (index == 2)
                appendLiteral("-");
            appendHexadecimal(id.data4[index], 2);
        }
    }

    void appendHexadecimal(unsigned value, int digitCount) {
        for (int digit = digitCount - 1; digit >= 0; --digit)
            put(unsigned("0123456789ABCDEF"[(value >> (4 * digit)) & 15]));
    }

    void appendKey(HistoryField field) {
        appendLiteral(",\"");
        appendLiteral(historyFieldNames[size_t(field)]);
        appendLiteral("\":");
    }

    void appendLiteral(std::string_view text) {
        std::memcpy(m_next, text.data(), text.size());
        m_next += text.size();
    }

    void put(unsigned byte) { *m_next++ = char(byte); }

    static constexpr bool isEscaped(char character) {
        return static_cast<unsigned char>(character) < 0x20 || character == '"' || character == '\\'
            || character == '/';
    }

    void appendEscape(char character) {
        constexpr std::string_view named = "\"\\/\b\f\n\r\t";
        constexpr std::string_view letters = "\"\\/bfnrt";
        if (const size_t index = named.find(character); index != std::string_view::npos) {
            put('\\');
            put(unsigned(letters[index]));
            return;
        }
        appendLiteral("\\u00");
        put(unsigned("01"[unsigned(character) >> 4]));
        put(unsigned("0123456789abcdef"[unsigned(character) & 15]));
    }

    /// Appends the character that starts with `unit` and gives how many more units it took.
    qsizetype appendBeyondAscii(char16_t unit, char16_t next) {
        if (unit < 0x800) {
            put(0xC0U | unit >> 6);
            put(0x80U | (unit & 0x3FU));
            return 0;
        }
        if (QChar::isHighSurrogate(unit) && QChar::isLowSurrogate(next)) {
            const char32_t character = QChar::surrogateToUcs4(unit, next);
            put(0xF0U | character >> 18);
            put(0x80U | (character >> 12 & 0x3FU));
            put(0x80U | (character >> 6 & 0x3FU));
            put(0x80U | (character & 0x3FU));
            return 1;
        }
        // Half a surrogate pair is no character, and a reader would refuse the whole file for it.
        const char16_t character = QChar::isSurrogate(unit) ? char16_t(QChar::ReplacementCharacter) : unit;
        put(0xE0U | character >> 12);
        put(0x80U | (character >> 6 & 0x3FU));
        put(0x80U | (character & 0x3FU));
        return 0;
    }

    QByteArray m_json { 16, '\0' };
    /// Where the text ends, in m_json, which is longer.
    char *m_next = m_json.data();
    bool m_isFinite = true;
};
} // namespace

std::optional<QByteArray> HistoryCodec::encode(const QList<HistoryEntry> &entries) {
    return Encoder().encode(entries);
}

bool HistoryCodec::prepend(QByteArray &json, const HistoryEntry &entry) {
    std::optional<QByteArray> front = encode({ entry });
    if (!front)
        return false;
    if (json == "[]") {
        json = std::move(*front);
        return true;
    }
    // The bracket that opened the old array becomes the comma behind the new entry.
    front->chop(1);
    json[0] = ',';
    json.prepend(*front);
    return true;
}

bool HistoryCodec::replace(
    QByteArray &json, const HistoryEntry &before, const std::optional<HistoryEntry> &after) {
    const std::optional<QByteArray> old = encode({ before });
    const std::optional<QByteArray> renewed = encode(after ? QList { *after } : QList<HistoryEntry>());
    if (!old || !renewed)
        return false;
    const auto withoutBrackets
        = [](const QByteArray &array) { return QByteArrayView(array).sliced(1).chopped(1); };
    // Quotes within a text are escaped, so that this is found nowhere but where the entry is.
    qsizetype start = json.indexOf(withoutBrackets(*old));
    if (start < 0)
        return false;
    qsizetype size = withoutBrackets(*old).size();
    const bool isFirst = start == 1;
    const bool isOnly = isFirst && json.size() == old->size();
    if (!after && !isOnly) {
        // One of the commas beside it goes with it.
        start -= isFirst ? 0 : 1;
        ++size;
    }
    json.replace(start, size, withoutBrackets(*renewed));
    return true;
}
