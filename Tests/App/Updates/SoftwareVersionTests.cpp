#include "TolmiApp/Updates/SoftwareVersion.h"

#include <gtest/gtest.h>

#include <array>

namespace {
struct Pair {
    const char *left;
    const char *right;
};

std::weak_ordering compare(const char *left, const char *right) {
    return compareVersions(QString::fromUtf8(left), QString::fromUtf8(right));
}

TEST(SoftwareVersion, OlderIsLessThanNewer) {
    constexpr std::array pairs { Pair { "1.9", "1.10" }, Pair { "1.0", "1.0.1" }, Pair { "0.9.9", "1" },
        Pair { "", "0.1" }, Pair { "1.0-beta", "1.0" }, Pair { "1.0-alpha", "1.0-beta" },
        Pair { "1.0-beta2", "1.0-beta10" }, Pair { "1.0-beta", "1.0-beta1" }, Pair { "1.0b1", "1.0" },
        Pair { "1.0-rc1", "1.0.1-alpha" }, Pair { "1.0-beta.2", "1.0-beta.x" }, Pair { "0.9", "1.0-alpha" },
        Pair { "1.0", "1.1-alpha" }, Pair { "99999999999999999998", "99999999999999999999" },
        Pair { "9", "10000000000000000000000" }, Pair { "1.0-beta", "1.0.0-rc" }, Pair { "41", "42" },
        Pair { "2025.12.31", "2026.1.1" } };
    for (const auto &[older, newer] : pairs) {
        EXPECT_TRUE(compare(older, newer) < 0) << older << " < " << newer;
        EXPECT_TRUE(compare(newer, older) > 0) << newer << " > " << older;
    }
}

TEST(SoftwareVersion, EqualVersionsMayBeWrittenDifferently) {
    constexpr std::array pairs { Pair { "1.0", "1.0.0" }, Pair { "1", "1.0" }, Pair { "v1.2", "1.2" },
        Pair { "1.02", "1.2" }, Pair { "1.0-beta2", "1.0beta02" }, Pair { "1.0-RC1", "1.0-rc1" },
        Pair { "1.0+build7", "1.0+build8" }, Pair { "", "0" }, Pair { "000", "0.0" }, Pair { "-.", "" },
        Pair { "1.0.0-beta", "1.0-beta" }, Pair { "1..2", "1.2" }, Pair { "1_2", "1.2" } };
    for (const auto &[left, right] : pairs) {
        EXPECT_TRUE(compare(left, right) == 0) << left << " = " << right;
        EXPECT_TRUE(compare(right, left) == 0) << right << " = " << left;
    }
}
} // namespace
