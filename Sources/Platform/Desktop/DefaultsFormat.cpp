#include "Platform/Desktop/DefaultsFormat.h"

#include <rapidjson/encodedstream.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>

#include <cmath>
#include <cstring>
#include <limits>

namespace {
/// Collects the scalar values of the outermost object.
class Collector : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Collector> {
public:
    ParsedDefaults parsed { {}, true };

    bool Null() { return leaveOut(); }
    bool Bool(bool value) { return take(value); }
    bool Int(int value) { return take(qint64(value)); }
    bool Uint(unsigned value) { return take(qint64(value)); }
    bool Int64(int64_t value) { return take(qint64(value)); }
    bool Uint64(uint64_t value) {
        const bool fits = value <= uint64_t(std::numeric_limits<qint64>::max());
        return fits ? take(qint64(value)) : take(double(value));
    }
    bool Double(double value) { return take(value); }
    bool String(const char *text, rapidjson::SizeType length, bool) {
        return take(QString::fromUtf8(text, qsizetype(length)));
    }
    bool Key(const char *text, rapidjson::SizeType length, bool) {
        if (m_depth == 1)
            m_key = QString::fromUtf8(text, qsizetype(length));
        return true;
    }
    bool StartObject() { return open(); }
    bool EndObject(rapidjson::SizeType) { return close(); }
    bool StartArray() { return m_depth > 0 && open(); }
    bool EndArray(rapidjson::SizeType) { return close(); }

private:
    /// A value outside any object stops the parser.
    bool take(const DefaultsValue &value) {
        if (m_depth == 1)
            parsed.values[m_key] = value;
        return m_depth > 0;
    }

    bool leaveOut() {
        parsed.isComplete = false;
        if (m_depth == 1)
            parsed.values.erase(m_key);
        return m_depth > 0;
    }

    bool open() {
        if (m_depth > 0)
            leaveOut();
        ++m_depth;
        return true;
    }

    bool close() {
        --m_depth;
        return true;
    }

    int m_depth = 0;
    QString m_key;
};

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void writeValue(Writer &writer, bool value) {
    writer.Bool(value);
}
void writeValue(Writer &writer, qint64 value) {
    writer.Int64(value);
}
void writeValue(Writer &writer, double value) {
    if (std::isfinite(value)) {
        writer.Double(value);
        return;
    }
    // JSON has no such numbers, but the reader accepts these words.
    const char *word = std::isnan(value) ? "NaN" : value > 0 ? "Infinity" : "-Infinity";
    writer.RawValue(word, std::strlen(word), rapidjson::kNumberType);
}
void writeValue(Writer &writer, const QString &value) {
    const QByteArray utf8 = value.toUtf8();
    writer.String(utf8.constData(), rapidjson::SizeType(utf8.size()));
}
} // namespace

ParsedDefaults parsedDefaults(const QByteArray &json) {
    // Iterative, so that deeply nested brackets cannot overflow the stack.
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseFullPrecisionFlag
        | rapidjson::kParseValidateEncodingFlag | rapidjson::kParseNanAndInfFlag;
    if (json.contains('\0'))
        return {}; // the reader would treat it as the end
    rapidjson::MemoryStream bytes(json.constData(), size_t(json.size()));
    rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> stream(bytes);
    rapidjson::Reader reader;
    Collector collector;
    if (!reader.Parse<flags>(stream, collector))
        return {};
    return collector.parsed;
}

QByteArray jsonOfDefaults(const std::map<QString, DefaultsValue> &values) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.SetIndent(' ', 2);
    writer.StartObject();
    for (const auto &[key, value] : values) {
        writeValue(writer, key);
        std::visit([&writer](const auto &single) { writeValue(writer, single); }, value);
    }
    writer.EndObject();
    return QByteArray(buffer.GetString(), qsizetype(buffer.GetSize())) + '\n';
}
