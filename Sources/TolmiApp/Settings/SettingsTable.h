#pragma once

#include "Platform/UserDefaults.h"
#include "TolmiApp/Settings/RawValue.h"

#include <functional>
#include <type_traits>
#include <vector>

/// How a type is stored: strings, numbers and bools directly, an enumeration as the stored string of its
/// case; an absent optional string is not stored.
namespace StoredForm {

/// The default for an absent value, unless the setting has its own.
template <typename Value>
inline const Value standard {};
template <typename Enum>
requires std::is_enum_v<Enum>
inline constexpr Enum standard<Enum> = RawValues<Enum>::fallback;

/// The stored value; absent if missing or of another type.
template <typename Value>
std::optional<Value> read(const UserDefaults &defaults, const QString &key) {
    if constexpr (std::is_enum_v<Value>) {
        const std::optional<QString> text = defaults.string(key);
        return text ? std::optional(rawValueOrDefault<Value>(*text)) : std::nullopt;
    } else if constexpr (std::is_same_v<Value, std::optional<QString>>) {
        return std::optional<Value>(std::in_place, defaults.string(key));
    } else if constexpr (std::is_same_v<Value, QString>) {
        return defaults.string(key);
    } else if constexpr (std::is_same_v<Value, double>) {
        return defaults.doubleValue(key);
    } else if constexpr (std::is_same_v<Value, qint64>) {
        return defaults.integer(key);
    } else {
        static_assert(std::is_same_v<Value, bool>);
        return defaults.boolean(key);
    }
}

template <typename Value>
void write(UserDefaults &defaults, const QString &key, const Value &value) {
    if constexpr (std::is_enum_v<Value>) {
        defaults.set(key, rawValue(value));
    } else if constexpr (std::is_same_v<Value, std::optional<QString>>) {
        if (value)
            defaults.set(key, *value);
        else
            defaults.removeObject(key);
    } else {
        defaults.set(key, value);
    }
}

} // namespace StoredForm

/// How one setting is stored.
template <typename Value>
struct SettingRow {
    /// The storage key.
    const char *key;
    /// The value if the stored one is missing or of another type. Enumerations have their own fallback.
    Value absent = StoredForm::standard<Value>;
    /// Corrects a value when loaded and when assigned. Without it every value is allowed.
    std::function<Value(const Value &)> repair {};
    /// Converts the stored value when loaded, instead of `repair`.
    std::function<Value(const std::optional<Value> &)> load {};
    /// Whether it is stored at every start. Otherwise it is stored only when assigned, so that a new default
    /// in a later release applies to everyone who has not changed it.
    bool isWrittenBack = true;
    /// Whether it is a part of the profile whose changes are counted.
    bool isOfProfile = false;
};

/// A setting of any type.
class AbstractSetting {
public:
    AbstractSetting() = default;
    AbstractSetting(const AbstractSetting &) = delete;
    AbstractSetting &operator=(const AbstractSetting &) = delete;
    virtual ~AbstractSetting() = default;

    /// Reads the value from the stored defaults without notifying observers.
    virtual void load() = 0;
    /// Assigns the repaired value if it differs, and returns whether it did.
    virtual bool repair() = 0;
    virtual void store() const = 0;
    virtual bool isWrittenBack() const = 0;
    virtual bool isOfProfile() const = 0;
};

/// All settings, in the order in which they are loaded and written back.
class SettingsTable {
public:
    /// `defaults` must outlive the table.
    explicit SettingsTable(UserDefaults &defaults)
        : m_defaults(defaults) { }

    UserDefaults &defaults() { return m_defaults; }
    /// Appends `setting`, which must outlive every use of the table.
    void add(AbstractSetting &setting) { m_settings.push_back(&setting); }
    void load() const;
    /// Stores the settings that are stored at every start.
    void writeBack() const;

private:
    UserDefaults &m_defaults;
    std::vector<AbstractSetting *> m_settings;
};

/// A setting and its row of the table.
template <typename Value>
class Setting final : public AbstractSetting {
public:
    /// Assigns a value and notifies observers.
    using Assign = std::function<void(const Value &)>;

    /// `value` holds the setting's value; a setting that is never assigned needs no `assign`.
    Setting(SettingsTable &table, Value &value, Assign assign, SettingRow<Value> row)
        : m_defaults(table.defaults())
        , m_value(value)
        , m_assign(std::move(assign))
        , m_row(std::move(row)) {
        table.add(*this);
    }

    void load() override {
        const std::optional<Value> stored = StoredForm::read<Value>(m_defaults, key());
        m_value = m_row.load ? m_row.load(stored) : repaired(stored.value_or(m_row.absent));
    }

    bool repair() override {
        // The comparison below does not work for NaN, which is not equal to itself.
        if (!m_row.repair)
            return false;
        const Value allowed = m_row.repair(m_value);
        const bool differs = allowed != m_value;
        if (differs)
            m_assign(allowed);
        return differs;
    }

    void store() const override { StoredForm::write(m_defaults, key(), m_value); }
    bool isWrittenBack() const override { return m_row.isWrittenBack; }
    bool isOfProfile() const override { return m_row.isOfProfile; }

    QString key() const { return QString::fromLatin1(m_row.key); }

private:
    Value repaired(const Value &value) const { return m_row.repair ? m_row.repair(value) : value; }

    UserDefaults &m_defaults;
    Value &m_value;
    const Assign m_assign;
    const SettingRow<Value> m_row;
};
