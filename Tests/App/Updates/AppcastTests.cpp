#include "TolmiApp/Updates/Appcast.h"

#include "Support/Print.h"
#include "TolmiApp/Updates/UpdateError.h"

#include <gtest/gtest.h>

namespace {
constexpr QStringView linuxName = u"linux";

QByteArray feedOf(const QByteArray &items) {
    return R"(<?xml version="1.0" encoding="utf-8"?><rss version="2.0" xmlns:sparkle="urn:updates"><channel>)"
           "<title>Tolmi</title>"
        + items + "</channel></rss>";
}

QByteArray item(const QByteArray &version, const QByteArray &platform = "linux") {
    return "<item><sparkle:version>" + version + R"(</sparkle:version><enclosure url="t.tar" length="1")"
        + (platform.isEmpty() ? QByteArray() : " sparkle:os=\"" + platform + '"') + "/></item>";
}

QString newestVersion(const QByteArray &items) {
    const auto newest = newestItem(parseAppcast(feedOf(items)), linuxName.toString());
    return newest ? newest->version : QStringLiteral("none");
}

TEST(Appcast, ReadsAllValuesOfAnItem) {
    const auto items = parseAppcast(feedOf(R"(<item><title>Version 1.2</title>
        <sparkle:version> 42 </sparkle:version><sparkle:shortVersionString>1.2</sparkle:shortVersionString>
        <pubDate>today</pubDate><description><![CDATA[<p>Faster</p>]]></description>
        <enclosure url="https://example.org/tolmi.tar.xz" length="1234" type="application/octet-stream"
            sparkle:os="Linux" sparkle:edSignature="AQID" sparkle:versionSignature="BAU="/></item>)"));
    AppcastItem expected;
    expected.version = QStringLiteral("42");
    expected.displayVersion = QStringLiteral("1.2");
    expected.releaseNotes = QStringLiteral("Faster");
    expected.platform = linuxName.toString();
    expected.url = QUrl(QStringLiteral("https://example.org/tolmi.tar.xz"));
    expected.length = 1234;
    expected.signature = QByteArray("\x01\x02\x03");
    expected.versionSignature = QByteArray("\x04\x05");
    EXPECT_EQ(items, std::vector { expected });
}

TEST(Appcast, ReadsTheVersionFromTheEnclosureToo) {
    const auto items = parseAppcast(
        feedOf(R"(<item><enclosure url="a" sparkle:version="7" sparkle:shortVersionString="0.7"/></item>)"));
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(items[0].version, QStringLiteral("7"));
    EXPECT_EQ(items[0].displayVersion, QStringLiteral("0.7"));
    EXPECT_EQ(items[0].platform, QStringLiteral("macos"));
}

TEST(Appcast, LeavesMissingOrInvalidValuesEmpty) {
    const auto items = parseAppcast(
        feedOf(R"(<item><sparkle:version>1</sparkle:version><enclosure length="many"/></item>)"));
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(items[0].displayVersion, QStringLiteral("1"));
    EXPECT_EQ(items[0].url, QUrl());
    EXPECT_EQ(items[0].length, 0);
    EXPECT_EQ(items[0].signature, QByteArray());
}

TEST(Appcast, ReturnsOneEntryPerSystemOfAnItem) {
    const auto items = parseAppcast(feedOf(R"(<item><sparkle:version>3</sparkle:version>
        <enclosure url="a.dmg"/><enclosure url="a.tar" sparkle:os="linux"/></item>)"));
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(newestItem(items, linuxName.toString())->url, QUrl(QStringLiteral("a.tar")));
}

TEST(Appcast, PicksTheHighestVersionForTheSystem) {
    EXPECT_EQ(newestVersion({}), QStringLiteral("none"));
    EXPECT_EQ(newestVersion(item("1.9") + item("1.10") + item("1.2")), QStringLiteral("1.10"));
    EXPECT_EQ(newestVersion(item("1.0") + item("9", "windows") + item("8", "")), QStringLiteral("1.0"));
    EXPECT_EQ(newestVersion(item("2.0") + item("2.0.0")), QStringLiteral("2.0"));
    EXPECT_EQ(newestVersion(item("") + item(" ")), QStringLiteral("none"));
    EXPECT_EQ(newestVersion("<item><sparkle:version>5</sparkle:version></item>"), QStringLiteral("none"));
}

TEST(Appcast, SkipsUnknownElements) {
    EXPECT_EQ(
        newestVersion("<image><item/></image><other><a><b/></a></other>" + item("1")), QStringLiteral("1"));
    const QByteArray nested
        = "<item><description>A<b>B</b>C</description><sparkle:version>1</sparkle:version>"
          R"(<enclosure sparkle:os="linux"><deep/></enclosure></item>)";
    EXPECT_EQ(newestVersion(nested), QStringLiteral("1"));
}

TEST(Appcast, RejectsInvalidFeeds) {
    const QByteArray whole = feedOf(item("1"));
    const std::vector<QByteArray> cases { "", "no XML", "<html/>", "<rss><channel>", whole.chopped(1),
        whole.left(whole.size() / 2), whole + "<rss/>", "<feed xmlns=\"urn:atom\"/>",
        feedOf("<item>&unknown;</item>"), feedOf("<sparkle2:a/>"), "<rss>\xff\xfe</rss>" };
    for (const QByteArray &feed : cases) {
        try {
            parseAppcast(feed);
            ADD_FAILURE() << feed.toStdString();
        } catch (const UpdateError &error) {
            EXPECT_EQ(error.code(), UpdateError::Code::InvalidFeed) << feed.toStdString();
        }
    }
}

TEST(Appcast, RejectsEntityExpansion) {
    const QByteArray bomb = "<!DOCTYPE rss [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;\">]>"
                            "<rss><channel><item><description>&b;</description></item></channel></rss>";
    EXPECT_THROW(parseAppcast(bomb), UpdateError);
    EXPECT_THROW(parseAppcast("<!DOCTYPE rss SYSTEM \"file:///etc/passwd\"><rss/>"), UpdateError);
}

TEST(Appcast, DeepNestingDoesNotOverflowTheStack) {
    constexpr int depth = 100000;
    QByteArray nested;
    for (int level = 0; level < depth; ++level)
        nested += "<a>";
    EXPECT_THROW(parseAppcast(feedOf("<item><description>" + nested)), UpdateError);
}
} // namespace
