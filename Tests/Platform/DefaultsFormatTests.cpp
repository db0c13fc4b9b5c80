#include "Platform/Desktop/DefaultsFormat.h"

#include "Support/Print.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {
using Values = std::map<QString, DefaultsValue>;

QString q(const char *utf8) {
    return QString::fromUtf8(utf8);
}
} // namespace

TEST(DefaultsFormat, RoundTripsEveryValue) {
    const double infinity = std::numeric_limits<double>::infinity();
    const Values values {
        { q("integer"), qint64(1) },
        { q("integral double"), 1.0 },
        { q("truth"), true },
        { q("digit"), q("1") },
        { q("untruth"), false },
        { q("largest"), std::numeric_limits<qint64>::max() },
        { q("smallest"), std::numeric_limits<qint64>::min() },
        { q("tenth"), 0.1 },
        { q("huge"), 1.7976931348623157e308 },
        { q("tiny"), 5e-324 },
        { q("many digits"), 0.1 + 0.2 },
        { q("large integral double"), 1e22 },
        { q("no number but a double"), infinity },
        { q("nor this"), -infinity },
        { q("empty"), q("") },
        { q(""), q("empty key") },
        { q("text"), q("a \"b\" \\ / \n\t\r\b\f \u0001 \u2028 \u0163 \U0001F3A4") },
        { q("nul"), QString(QChar(0)) + u'x' },
    };
    const ParsedDefaults parsed = parsedDefaults(jsonOfDefaults(values));
    EXPECT_TRUE(parsed.isComplete);
    EXPECT_EQ(parsed.values, values);
    EXPECT_TRUE(std::signbit(
        std::get<double>(parsedDefaults(jsonOfDefaults({ { q("z"), -0.0 } })).values.at(q("z")))));
    EXPECT_TRUE(std::isnan(
        std::get<double>(parsedDefaults(jsonOfDefaults({ { q("n"), std::nan("") } })).values.at(q("n")))));
}

TEST(DefaultsFormat, WritesOneValuePerLine) {
    EXPECT_EQ(
        jsonOfDefaults({ { q("b"), 1.0 }, { q("a"), q("/x") } }), "{\n  \"a\": \"/x\",\n  \"b\": 1.0\n}\n");
    EXPECT_EQ(jsonOfDefaults({}), "{}\n");
}

TEST(DefaultsFormat, NeverWritesWhatItCouldNotRead) {
    const ParsedDefaults parsed = parsedDefaults(jsonOfDefaults({ { q("k"), QString(QChar(0xD800)) } }));
    EXPECT_TRUE(parsed.isComplete);
    EXPECT_EQ(parsed.values, (Values { { q("k"), q("?") } }));
}

TEST(DefaultsFormat, ReadsAHandWrittenFile) {
    const struct {
        QByteArray json;
        Values values;
        bool isComplete;
    } cases[] {
        { "{}", {}, true },
        { " { \"a\" : 1 , \"b\":1.0,\"c\":1e0 }\n",
            { { q("a"), qint64(1) }, { q("b"), 1.0 }, { q("c"), 1.0 } }, true },
        { "\xEF\xBB\xBF{\"a\":true}", { { q("a"), true } }, true },
        { "{\"a\":1,\"a\":\"2\"}", { { q("a"), q("2") } }, true },
        { "{\"a\":9223372036854775808}", { { q("a"), 9223372036854775808.0 } }, true },
        { "{\"a\":123456789012345678901234567890}", { { q("a"), 123456789012345678901234567890.0 } }, true },
        { "{\"a\":null,\"b\":1}", { { q("b"), qint64(1) } }, false },
        { "{\"b\":1,\"a\":[1,{\"b\":2}]}", { { q("b"), qint64(1) } }, false },
        { "{\"a\":{\"b\":{\"b\":2}},\"b\":1}", { { q("b"), qint64(1) } }, false },
        { "{\"a\":1,\"a\":null}", {}, false },
        { "", {}, false },
        { " ", {}, false },
        { "[]", {}, false },
        { "[{\"a\":1}]", {}, false },
        { "1", {}, false },
        { "\"a\"", {}, false },
        { "null", {}, false },
        { "{\"a\":1", {}, false },
        { "{\"a\":1}}", {}, false },
        { "{\"a\":1}{}", {}, false },
        { "{\"a\":1,}", {}, false },
        { "{a:1}", {}, false },
        { "{\"a\":01}", {}, false },
        { "{\"a\":1e999}", {}, false },
        { "{\"a\":\"\xFF\"}", {}, false },
        { "{\"a\":\"\\ud800\"}", {}, false },
        { "{\"a\":\"\n\"}", {}, false },
        { QByteArray("{\"a\":1}\0x", 9), {}, false },
        { QByteArray("\x7F"
                     "ELF\x02\x01\x01\0\0",
              9),
            {}, false },
        { QByteArray(1 << 20, '['), {}, false },
        { "{\"a\":" + QByteArray(1 << 20, '[') + QByteArray(1 << 20, ']') + '}', {}, false },
        { "{\"a\":" + QByteArray("{\"a\":").repeated(100000), {}, false },
    };
    for (const auto &[json, values, isComplete] : cases) {
        const ParsedDefaults parsed = parsedDefaults(json);
        EXPECT_EQ(parsed.values, values) << json.left(80).toStdString();
        EXPECT_EQ(parsed.isComplete, isComplete) << json.left(80).toStdString();
    }
}

TEST(DefaultsFormat, ReadsALargeFile) {
    Values values { { q("long"), QString(5 << 20, u'x') } };
    for (int index = 0; index < 10000; ++index)
        values[q("key ") + QString::number(index)] = qint64(index);
    EXPECT_EQ(parsedDefaults(jsonOfDefaults(values)).values, values);
}
