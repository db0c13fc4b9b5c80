#pragma once

#include "Platform/UserDefaults.h"

#include <map>
#include <vector>

/// Settings in memory.
class FakeUserDefaults final : public UserDefaults {
public:
    /// One call of set, or of removeObject, which has no value.
    struct Write {
        QString key;
        std::optional<DefaultsValue> value;

        friend bool operator==(const Write &, const Write &) = default;
    };

    /// What is stored.
    std::map<QString, DefaultsValue> values;
    /// Every write, in order.
    std::vector<Write> writes;
    int flushCount = 0;

    std::optional<DefaultsValue> object(const QString &key) const override;
    void set(const QString &key, const DefaultsValue &value) override;
    void removeObject(const QString &key) override;
    void flush() override { ++flushCount; }
};
