#include "Platform/Desktop/FileUserDefaults.h"
#include "Support/FakeAtomicFileWriter.h"
#include "Support/FakeFileManager.h"
#include "Support/FakeUserDefaults.h"
#include "Support/Print.h"

#include <gtest/gtest.h>

namespace {
class FileDefaults {
public:
    UserDefaults &defaults() { return m_defaults; }

private:
    FakeFileManager m_files;
    FakeAtomicFileWriter m_writer;
    FileUserDefaults m_defaults { FileURL(QStringLiteral("/home/user/settings.json")), m_files, m_writer };
};

class MemoryDefaults {
public:
    UserDefaults &defaults() { return m_defaults; }

private:
    FakeUserDefaults m_defaults;
};

const QString key = QStringLiteral("tolmi.key");

/// The result of each typed read.
struct Readings {
    std::optional<QString> string;
    std::optional<double> doubleValue;
    std::optional<qint64> integer;
    std::optional<bool> boolean;

    friend bool operator==(const Readings &, const Readings &) = default;
};

template <typename Kind>
class UserDefaultsContract : public testing::Test {
protected:
    UserDefaults &defaults() { return m_kind.defaults(); }

    Readings readings() {
        return { defaults().string(key), defaults().doubleValue(key), defaults().integer(key),
            defaults().boolean(key) };
    }

private:
    Kind m_kind;
};

using Kinds = testing::Types<MemoryDefaults, FileDefaults>;
TYPED_TEST_SUITE(UserDefaultsContract, Kinds);
} // namespace

TYPED_TEST(UserDefaultsContract, TellsAMissingKeyFromAStoredValue) {
    EXPECT_EQ(this->defaults().object(key), std::nullopt);
    EXPECT_EQ(this->readings(), Readings());
    this->defaults().set(key, QString());
    EXPECT_EQ(this->defaults().object(key), DefaultsValue(QString()));
    this->defaults().removeObject(key);
    EXPECT_EQ(this->defaults().object(key), std::nullopt);
    this->defaults().removeObject(key);
    EXPECT_EQ(this->defaults().object(key), std::nullopt);
}

TYPED_TEST(UserDefaultsContract, KeepsTheTypeOfAValue) {
    for (const DefaultsValue &value : { DefaultsValue(true), DefaultsValue(qint64(1)), DefaultsValue(1.0),
             DefaultsValue(QStringLiteral("1")), DefaultsValue(false) }) {
        this->defaults().set(key, value);
        EXPECT_EQ(this->defaults().object(key), value);
    }
}

TYPED_TEST(UserDefaultsContract, KeepsWhatWasSetWhenItIsFlushed) {
    this->defaults().flush();
    EXPECT_EQ(this->defaults().object(key), std::nullopt);
    this->defaults().set(key, QStringLiteral("kept"));
    this->defaults().flush();
    EXPECT_EQ(this->defaults().object(key), DefaultsValue(QStringLiteral("kept")));
}

TYPED_TEST(UserDefaultsContract, ReadsAValueAsWhatItCanBe) {
    const struct {
        DefaultsValue value;
        Readings expected;
    } cases[] {
        { QStringLiteral("1"), { QStringLiteral("1"), {}, {}, {} } },
        { true, { {}, {}, {}, true } },
        { qint64(0), { {}, 0.0, 0, false } },
        { qint64(1), { {}, 1.0, 1, true } },
        { qint64(2), { {}, 2.0, 2, {} } },
        { 0.0, { {}, 0.0, 0, false } },
        { 1.0, { {}, 1.0, 1, true } },
        { 0.5, { {}, 0.5, {}, {} } },
        { -3.0, { {}, -3.0, -3, {} } },
        { 1e300, { {}, 1e300, {}, {} } },
    };
    for (const auto &[value, expected] : cases) {
        this->defaults().set(key, value);
        EXPECT_EQ(this->readings(), expected) << value.index();
    }
}
