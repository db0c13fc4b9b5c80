// The reading half of HistoryCodec.

#include "TolmiApp/History/HistoryCodec.h"
#include "TolmiApp/History/HistoryFields.h"

#include <rapidjson/reader.h>

#include <cmath>

namespace {
constexpr unsigned bitOf(HistoryField field) {
    return 1U << unsigned(field);
}

constexpr unsigned requiredFields = bitOf(HistoryField::Id) | bitOf(HistoryField::Timestamp)
    | bitOf(HistoryField::RawText) | bitOf(HistoryField::RefinedText) | bitOf(HistoryField::Language);

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
        return m_field == HistoryField::Ignored || !(requiredFields & bitOf(m_field));
    }
    bool Bool(bool value) {
        if (!isFieldOfEntry())
            return isInsideIgnored();
        if (m_field == HistoryField::IsPinned)
            m_entry.isPinned = value;
        return m_field == HistoryField::IsPinned || m_field == HistoryField::Ignored;
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
        return m_depth > depthOfEntry || (m_depth == depthOfEntry && m_field == HistoryField::Ignored);
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
        m_entry = HistoryEntry { {}, QUuid() };
        m_seenFields = 0;
    }

    void setField(std::string_view name) {
        size_t index = 0;
        while (index < historyFieldNames.size() && historyFieldNames[index] != name)
            ++index;
        const HistoryField field = HistoryField(index);
        m_field = m_seenFields & bitOf(field) ? HistoryField::Ignored : field;
        m_seenFields |= bitOf(field);
    }

    bool setNumber(double value) {
        switch (m_field) {
        case HistoryField::Timestamp:
            m_entry.timestamp = { value };
            return true;
        case HistoryField::DurationSeconds:
            m_entry.durationSeconds = value;
            return true;
        case HistoryField::PasteTimestamp:
            m_entry.pasteTimestamp = Date { value };
            return true;
        default:
            return m_field == HistoryField::Ignored;
        }
    }

    bool setText(std::string_view text) {
        switch (m_field) {
        case HistoryField::Id:
            return setId(text);
        case HistoryField::RawText:
            return assign(m_entry.rawText, text);
        case HistoryField::RefinedText:
            return assign(m_entry.refinedText, text);
        case HistoryField::Language:
            return assignOften(m_entry.language, text, m_lastLanguage);
        case HistoryField::PasteTargetAppName:
            return assignOften(m_entry.pasteTargetAppName, text, m_lastAppName);
        case HistoryField::PasteTargetBundleID:
            return assignOften(m_entry.pasteTargetBundleID, text, m_lastBundleID);
        case HistoryField::AudioFileRelativePath:
            return assign(m_entry.audioFileRelativePath, text);
        case HistoryField::QualityPass:
            return setQualityPass(text);
        default:
            return m_field == HistoryField::Ignored;
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
    HistoryField m_field = HistoryField::Ignored;
    unsigned m_seenFields = 0;
    HistoryEntry m_entry { {}, QUuid() };
    LastText m_lastLanguage;
    LastText m_lastAppName;
    LastText m_lastBundleID;
};
} // namespace

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
