#pragma once

#include "Platform/UserDefaults.h"
#include "TolmiApp/Settings/RawValue.h"

#include <functional>
#include <type_traits>
#include <vector>

/// How a type of value is stored: texts, numbers and truth values as they are, an enumeration as the stored
/// text of its case, and nothing at all for an optional text that is absent.
namespace StoredForm {

/// What stands for an absent value where a setting names no other.
template <typename Value>
inline const Value standard {};
template <typename Enum>
requires std::is_enum_v<Enum>
inline constexpr Enum standard<Enum> = RawValues<Enum>::fallback;

/// The stored value; absent when it is missing or of another type.
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

/// How one setting is kept.
template <typename Value>
struct SettingRow {
    /// The name under which it is stored.
    const char *key;
    /// What stands for a value that is missing or of another type. Enumerations have theirs.
    Value absent = StoredForm::standard<Value>;
    /// What is made of a value when it is loaded and when it is assigned. Without it every value is allowed.
    std::function<Value(const Value &)> repair {};
    /// What is made of the stored value when it is loaded, where that is not `repair` of it or of `absent`.
    std::function<Value(const std::optional<Value> &)> load {};
    /// Whether it is stored at every start. One that is not stays unstored until it is first assigned, so
    /// that a better default of a later release reaches everyone who has not changed it.
    bool isWrittenBack = true;
    /// Whether it is a part of the profile whose changes count.
    bool isOfProfile = false;
};

/// A setting, whatever its type.
class AbstractSetting {
public:
    AbstractSetting() = default;
    AbstractSetting(const AbstractSetting &) = delete;
    AbstractSetting &operator=(const AbstractSetting &) = delete;
    virtual ~AbstractSetting() = default;

    /// Takes the value from the stored defaults. Nobody is told.
    virtual void load() = 0;
    /// Assigns the repaired value where that differs from the present one, and returns whether it did.
    virtual bool repair() = 0;
    virtual void store() const = 0;
    virtual bool isWrittenBack() const = 0;
    virtual bool isOfProfile() const = 0;
};

/// All settings, in the order in which they are loaded and written back.
class SettingsTable {
public:
    /// `defaults` outlives the table.
    explicit SettingsTable(UserDefaults &defaults)
        : m_defaults(defaults) { }

    UserDefaults &defaults() { return m_defaults; }
    /// `setting` comes last, and outlives every use of the table.
    void add(AbstractSetting &setting) { m_settings.push_back(&setting); }
    void load() const;
    /// Stores the settings that are stored at every start.
    void writeBack() const;

private:
    UserDefaults &m_defaults;
    std::vector<AbstractSetting *> m_settings;
};

/// A setting and the row of the table that tells how it is kept.
template <typename Value>
class Setting final : public AbstractSetting {
public:
    /// Assigns a value so that observers hear of it.
    using Assign = std::function<void(const Value &)>;

    /// `value` is where the setting stands; one that is never assigned needs no `assign`.
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
        // Not left to the comparison, to which not even the same number is equal where it is none.
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
