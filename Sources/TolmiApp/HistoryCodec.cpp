#include "TolmiApp/HistoryCodec.h"

#include "Platform/Uuid.h"

#include <QStringConverter>

#include <rapidjson/reader.h>

#include <array>
#include <charconv>
#include <cmath>
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

class Encoder {
public:
    std::optional<QByteArray> encode(const QList<HistoryEntry> &entries) {
        m_json += '[';
        for (const HistoryEntry &entry : entries) {
            if (m_json.size() > 1)
                m_json += ',';
            append(entry);
        }
        m_json += ']';
        return m_isFinite ? std::optional(std::move(m_json)) : std::nullopt;
    }

private:
    void append(const HistoryEntry &entry) {
        m_json += '{';
        append(Field::Id, uuidString(entry.id));
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
        m_json += entry.isPinned ? "true}" : "false}";
    }

    template <typename Value>
    void appendPresent(Field field, const std::optional<Value> &value) {
        if (value)
            append(field, *value);
    }

    void append(Field field, const QString &text) {
        appendKey(field);
        m_json += '"';
        appendEscaped(utf8Of(text));
        m_json += '"';
    }

    void append(Field field, double number) {
        m_isFinite = m_isFinite && std::isfinite(number);
        appendKey(field);
        // Numbers of everyday size are written without an exponent, even where that is longer.
        const double size = std::abs(number);
        const bool isPlain = size == 0 || (size >= 1e-4 && size < 1e16);
        const auto format = isPlain ? std::chars_format::fixed : std::chars_format::scientific;
        std::array<char, 32> digits;
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number, format).ptr;
        m_json.append(digits.data(), end - digits.data());
    }

    void appendKey(Field field) {
        if (!m_json.endsWith('{'))
            m_json += ',';
        const std::string_view name = fieldNames[size_t(field)];
        m_json += '"';
        m_json.append(name.data(), qsizetype(name.size()));
        m_json += "\":";
    }

    /// Valid until the next call. Half a surrogate pair becomes a replacement character.
    std::string_view utf8Of(const QString &text) {
        const qsizetype space = m_toUtf8.requiredSpace(text.size());
        if (m_utf8.size() < space)
            m_utf8.resize(space);
        const char *end = m_toUtf8.appendToBuffer(m_utf8.data(), text);
        return { m_utf8.constData(), size_t(end - m_utf8.constData()) };
    }

    void appendEscaped(std::string_view text) {
        const char *written = text.data();
        const char *const end = text.data() + text.size();
        for (const char *next = written; next != end; ++next) {
            if (!isEscaped(*next))
                continue;
            m_json.append(written, next - written);
            appendEscape(*next);
            written = next + 1;
        }
        m_json.append(written, end - written);
    }

    static constexpr bool isEscaped(char character) {
        return static_cast<unsigned char>(character) < 0x20 || character == '"' || character == '\\'
            || character == '/';
    }

    void appendEscape(char character) {
        constexpr std::string_view named = "\"\\/\b\f\n\r\t";
        constexpr std::string_view letters = "\"\\/bfnrt";
        m_json += '\\';
        if (const size_t index = named.find(character); index != std::string_view::npos) {
            m_json += letters[index];
            return;
        }
        constexpr std::string_view digits = "0123456789abcdef";
        m_json += "u00";
        m_json += digits[size_t(character) >> 4];
        m_json += digits[size_t(character) & 15];
    }

    QByteArray m_json;
    QByteArray m_utf8;
    QStringEncoder m_toUtf8 { QStringConverter::Utf8, QStringConverter::Flag::Stateless };
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
            return assign(m_entry.language, text);
        case Field::PasteTargetAppName:
            return assign(m_entry.pasteTargetAppName, text);
        case Field::PasteTargetBundleID:
            return assign(m_entry.pasteTargetBundleID, text);
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
};
} // namespace

std::optional<QByteArray> HistoryCodec::encode(const QList<HistoryEntry> &entries) {
    return Encoder().encode(entries);
}

std::optional<QList<HistoryEntry>> HistoryCodec::decode(QByteArray json) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    constexpr unsigned flags = rapidjson::kParseInsituFlag | rapidjson::kParseFullPrecisionFlag
        | rapidjson::kParseValidateEncodingFlag;
    const qsizetype start = json.startsWith(byteOrderMark.data()) ? qsizetype(byteOrderMark.size()) : 0;
    rapidjson::InsituStringStream stream(json.data() + start);
    rapidjson::Reader reader;
    EntryReader entryReader;
    // A zero byte ends the text for the library; it must be the end of the file too.
    const bool isWhole = !reader.Parse<flags>(stream, entryReader).IsError()
        && qsizetype(stream.Tell()) == json.size() - start;
    return isWhole ? std::optional(std::move(entryReader.entries)) : std::nullopt;
}
