#include "Support/FakeUserDefaults.h"

std::optional<DefaultsValue> FakeUserDefaults::object(const QString &key) const {
    const auto found = values.find(key);
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

void FakeUserDefaults::set(const QString &key, const DefaultsValue &value) {
    values[key] = value;
    writes.push_back({ key, value });
}

void FakeUserDefaults::removeObject(const QString &key) {
    values.erase(key);
    writes.push_back({ key, std::nullopt });
}
