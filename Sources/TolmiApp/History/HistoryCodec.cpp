#include "TolmiApp/History/HistoryCodec.h"

#include <rapidjson/reader.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string_view>

namespace {
enum class Field {
    Id,
    Timestamp,
    RawText,
    RefinedText,
    Language,
    DurationSeconds,
    PasteTargetAppName,
    PasteTargetBundleID,
    PasteTimestamp,
    AudioFileRelativePath,
    QualityPass,
    IsPinned,
    /// A key that means nothing here, or one whose value was already read.
    Ignored,
};

constexpr std::array<std::string_view, size_t(Field::Ignored)> fieldNames { "id", "timestamp", "rawText",
    "refinedText", "language", "durationSeconds", "pasteTargetAppName", "pasteTargetBundleID",
    "pasteTimestamp", "audioFileRelativePath", "qualityPass", "isPinned" };

constexpr unsigned bitOf(Field field) {
    return 1U << unsigned(field);
}

constexpr unsigned requiredFields = bitOf(Field::Id) | bitOf(Field::Timestamp) | bitOf(Field::RawText)
    | bitOf(Field::RefinedText) | bitOf(Field::Language);

// Writing

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
        append(Field::Timestamp, entry.timestamp.secondsSinceReferenceDate);
        append(Field::RawText, entry.rawText);
        append(Field::RefinedText, entry.refinedText);
        append(Field::Language, entry.language);
        appendPresent(Field::DurationSeconds, entry.durationSeconds);
        appendPresent(Field::PasteTargetAppName, entry.pasteTargetAppName);
        appendPresent(Field::PasteTargetBundleID, entry.pasteTargetBundleID);
        if (entry.pasteTimestamp)
            append(Field::PasteTimestamp, entry.pasteTimestamp->secondsSinceReferenceDate);
        appendPresent(Field::AudioFileRelativePath, entry.audioFileRelativePath);
        append(Field::QualityPass, rawValue(entry.qualityPass));
        appendKey(Field::IsPinned);
        appendLiteral(entry.isPinned ? "true}" : "false}");
    }

    template <typename Value>
    void appendPresent(Field field, const std::optional<Value> &value) {
        if (value)
            append(field, *value);
    }

    void append(Field field, const QString &text) {
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

    void append(Field field, double number) {
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

    void appendKey(Field field) {
        appendLiteral(",\"");
        appendLiteral(fieldNames[size_t(field)]);
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

// Reading

/// Lower and upper case digits alike, in the form 8-4-4-4-12 and nothing else.
std::optional<QUuid> uuidOf(std::string_view text) {
    constexpr qsizetype length = 36;
    if (text.size() != length)
        return std::nullopt;
    const auto id = QUuid::fromString(QLatin1StringView(text.data(), length));
    // Every malformed text comes back as the null id, which is a legal id where it is spelled out.
    constexpr std::string_view null = "00000000-0000-0000-0000-000000000000";
    return id.isNull() && text != null ? std::nullopt : std::optional(id);
}

/// Receives the parts of the file one by one. Each operation gives false to end the reading.
class EntryReader {
public:
    QList<HistoryEntry> entries;

    // What the reader calls; the names are the library's.
    bool Null() {
        if (!isFieldOfEntry())
            return isInsideIgnored();
        return m_field == Field::Ignored || !(requiredFields & bitOf(m_field));
    }
    bool Bool(bool value) {
        if (!isFieldOfEntry())
            return isInsideIgnored();
        if (m_field == Field::IsPinned)
            m_entry.isPinned = value;
        return m_field == Field::IsPinned || m_field == Field::Ignored;
    }
    bool Int(int value) { return Double(value); }
    bool Uint(unsigned value) { return Double(value); }
    bool Int64(int64_t value) { return Double(double(value)); }
    bool Uint64(uint64_t value) { return Double(double(value)); }
    bool Double(double value) {
        if (!std::isfinite(value))
            return false;
        return isFieldOfEntry() ? setNumber(value) : isInsideIgnored();
    }
    bool RawNumber(const char *, rapidjson::SizeType, bool) { return false; }
    bool String(const char *characters, rapidjson::SizeType length, bool) {
        const std::string_view text(characters, length);
        if (holdsLoneSurrogate(text))
            return false;
        return isFieldOfEntry() ? setText(text) : isInsideIgnored();
    }
    bool Key(const char *characters, rapidjson::SizeType length, bool) {
        const std::string_view name(characters, length);
        if (m_depth == depthOfEntry)
            setField(name);
        return !holdsLoneSurrogate(name);
    }
    bool StartArray() { return enter(m_depth == 0 || isInsideIgnored()); }
    bool EndArray(rapidjson::SizeType) { return leave(); }
    bool StartObject() {
        if (m_depth == depthOfEntry - 1)
            startEntry();
        return enter(m_depth == depthOfEntry - 1 || isInsideIgnored());
    }
    bool EndObject(rapidjson::SizeType) {
        if (m_depth == depthOfEntry) {
            if ((m_seenFields & requiredFields) != requiredFields)
                return false;
            entries.append(std::move(m_entry));
        }
        return leave();
    }

private:
    static constexpr int depthOfEntry = 2;
    /// The library calls itself for each level; this keeps a hostile file from using up the stack.
    static constexpr int greatestDepth = 512;

    bool isFieldOfEntry() const { return m_depth == depthOfEntry; }

    /// Whether what comes now belongs to the value of an ignored key, so that it may be anything.
    bool isInsideIgnored() const {
        return m_depth > depthOfEntry || (m_depth == depthOfEntry && m_field == Field::Ignored);
    }

    bool enter(bool isExpected) { return isExpected && ++m_depth <= greatestDepth; }

    bool leave() {
        --m_depth;
        return true;
    }

    /// The library takes the escape of a second half without the first for a character.
    static bool holdsLoneSurrogate(std::string_view text) {
        for (size_t at = text.find('\xED'); at != std::string_view::npos; at = text.find('\xED', at + 1)) {
            if (static_cast<unsigned char>(text[at + 1]) >= 0xA0)
                return true;
        }
        return false;
    }

    void startEntry() {
        m_entry = HistoryEntry { .id = QUuid() };
        m_seenFields = 0;
    }

    void setField(std::string_view name) {
        size_t index = 0;
        while (index < fieldNames.size() && fieldNames[index] != name)
            ++index;
        const Field field = Field(index);
        m_field = m_seenFields & bitOf(field) ? Field::Ignored : field;
        m_seenFields |= bitOf(field);
    }

    bool setNumber(double value) {
        switch (m_field) {
        case Field::Timestamp:
            m_entry.timestamp = { value };
            return true;
        case Field::DurationSeconds:
            m_entry.durationSeconds = value;
            return true;
        case Field::PasteTimestamp:
            m_entry.pasteTimestamp = Date { value };
            return true;
        default:
            return m_field == Field::Ignored;
        }
    }

    bool setText(std::string_view text) {
        switch (m_field) {
        case Field::Id:
            return setId(text);
        case Field::RawText:
            return assign(m_entry.rawText, text);
        case Field::RefinedText:
            return assign(m_entry.refinedText, text);
        case Field::Language:
            return assignOften(m_entry.language, text, m_lastLanguage);
        case Field::PasteTargetAppName:
            return assignOften(m_entry.pasteTargetAppName, text, m_lastAppName);
        case Field::PasteTargetBundleID:
            return assignOften(m_entry.pasteTargetBundleID, text, m_lastBundleID);
        case Field::AudioFileRelativePath:
            return assign(m_entry.audioFileRelativePath, text);
        case Field::QualityPass:
            return setQualityPass(text);
        default:
            return m_field == Field::Ignored;
        }
    }

    template <typename Target>
    static bool assign(Target &target, std::string_view text) {
        target = QString::fromUtf8(text.data(), qsizetype(text.size()));
        return true;
    }

    /// A text as it stood last in a field. The characters lie in the file's own memory.
    struct LastText {
        std::string_view characters;
        QString text;
    };

    /// For fields that say the same in most entries: equal neighbours share one text.
    template <typename Target>
    static bool assignOften(Target &target, std::string_view text, LastText &last) {
        if (last.characters != text)
            last = { text, QString::fromUtf8(text.data(), qsizetype(text.size())) };
        target = last.text;
        return true;
    }

    bool setId(std::string_view text) {
        const std::optional<QUuid> id = uuidOf(text);
        if (id)
            m_entry.id = *id;
        return id.has_value();
    }

    bool setQualityPass(std::string_view text) {
        const auto pass = caseOfRawValue<QualityPass>(QString::fromUtf8(text.data(), qsizetype(text.size())));
        if (pass)
            m_entry.qualityPass = *pass;
        return pass.has_value();
    }

    int m_depth = 0;
    Field m_field = Field::Ignored;
    unsigned m_seenFields = 0;
    HistoryEntry m_entry { .id = QUuid() };
    LastText m_lastLanguage;
    LastText m_lastAppName;
    LastText m_lastBundleID;
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

std::optional<QList<HistoryEntry>> HistoryCodec::decode(QByteArray json) {
    // Much faster for the whole file at once than for each text.
    if (!json.isValidUtf8())
        return std::nullopt;
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    const qsizetype start = json.startsWith(byteOrderMark.data()) ? qsizetype(byteOrderMark.size()) : 0;
    rapidjson::InsituStringStream stream(json.data() + start);
    rapidjson::Reader reader;
    EntryReader entryReader;
    constexpr unsigned flags = rapidjson::kParseInsituFlag | rapidjson::kParseFullPrecisionFlag;
    // A zero byte ends the text for the library; it must be the end of the file too.
    const bool isWhole = !reader.Parse<flags>(stream, entryReader).IsError()
        && qsizetype(stream.Tell()) == json.size() - start;
    return isWhole ? std::optional(std::move(entryReader.entries)) : std::nullopt;
}
