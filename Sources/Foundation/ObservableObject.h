#pragma once

#include <QObject>

#include <utility>

/// An object with published fields, which tells its observers just before one changes.
///
/// `objectWillChange` and the `...WillChange` signals are for C++ observers: they run inside the assignment,
/// while the old value is still readable, on every assignment, an equal one too, and must not write back. The
/// `...Changed` signals are for QML: they follow a real change.
class ObservableObject : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /// A published field is about to change.
    void objectWillChange();
};

/// Declares a published field without a setter for others: property `name`, `name()`, `m_name`, the private
/// `setName` given as `setter`, and the signals `nameWillChange(newValue)` and `nameChanged()`.
#define TOLMI_PUBLISHED_READONLY(type, name, setter, initialValue)                                           \
    Q_PROPERTY(type name READ name NOTIFY name##Changed)                                                     \
public:                                                                                                      \
    const type &name() const {                                                                               \
        return m_##name;                                                                                     \
    }                                                                                                        \
    Q_SIGNAL void name##WillChange(const type &newValue);                                                    \
    Q_SIGNAL void name##Changed();                                                                           \
                                                                                                             \
private:                                                                                                     \
    void setter(type newValue) {                                                                             \
        const bool differs = !(m_##name == newValue);                                                        \
        Q_EMIT objectWillChange();                                                                           \
        Q_EMIT name##WillChange(newValue);                                                                   \
        m_##name = std::move(newValue);                                                                      \
        if (differs)                                                                                         \
            Q_EMIT name##Changed();                                                                          \
    }                                                                                                        \
    type m_##name = initialValue;

/// Declares a published field that everybody may set. After storing, the member function `rule()` runs, which
/// may assign again; QML hears of the change last, and once for the whole assignment.
#define TOLMI_PUBLISHED(type, name, setter, rule)                                                            \
    Q_PROPERTY(type name READ name WRITE setter NOTIFY name##Changed)                                        \
public:                                                                                                      \
    const type &name() const {                                                                               \
        return m_##name;                                                                                     \
    }                                                                                                        \
    void setter(type newValue) {                                                                             \
        const type oldValue = m_##name;                                                                      \
        Q_EMIT objectWillChange();                                                                           \
        Q_EMIT name##WillChange(newValue);                                                                   \
        m_##name = std::move(newValue);                                                                      \
        const bool isInsideItsRule = std::exchange(m_##name##RuleRuns, true);                                \
        rule();                                                                                              \
        m_##name##RuleRuns = isInsideItsRule;                                                                \
        if (!isInsideItsRule && !(m_##name == oldValue))                                                     \
            Q_EMIT name##Changed();                                                                          \
    }                                                                                                        \
    Q_SIGNAL void name##WillChange(const type &newValue);                                                    \
    Q_SIGNAL void name##Changed();                                                                           \
                                                                                                             \
private:                                                                                                     \
    type m_##name {};                                                                                        \
    bool m_##name##RuleRuns = false;
