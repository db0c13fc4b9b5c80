#include "TolmiApp/Updates/ReleaseNotes.h"

#include "Support/Print.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>

TEST(ReleaseNotes, KeepTheTextOfTheirHtml) {
    constexpr std::array<std::pair<QStringView, QStringView>, 16> cases { {
        { u"", u"" },
        { u"One line", u"One line" },
        { u"first\nsecond", u"first\nsecond" },
        { u"<p>One</p><p>Two</p>", u"One\n\nTwo" },
        { u"<h2>New</h2>\n<ul>\n <li>A</li>\n <li>B</li>\n</ul>", u"New\n\n\u2022 A\n\u2022 B" },
        { u"a<br>b<BR/>c", u"a\nb\nc" },
        { u"<b>very</b> <i>new</i>", u"very new" },
        { u"<p>one\n   line</p>", u"one line" },
        { u"Rock &amp; roll &lt;3 &#233; &#xE9; &quot;x&quot;", u"Rock & roll <3 \u00e9 \u00e9 \"x\"" },
        { u"&amp;lt;", u"&lt;" },
        { u"&bogus; &; &#; &#x; &#0; &#xD800; &#x110000; & ;",
            u"&bogus; &; &#; &#x; &#0; &#xD800; &#x110000; & ;" },
        { u"1 < 2", u"1 < 2" },
        { u"<a href=\"https://example.org\">more</a>", u"more" },
        { u"<img src=\"https://example.org/spy.png\">", u"" },
        { u"<p><div><p>deep</p></div></p>", u"deep" },
        { u"<ul><li>A", u"\u2022 A" },
    } };
    for (const auto &[html, plain] : cases)
        EXPECT_EQ(plainReleaseNotes(html.toString()), plain.toString());
}
