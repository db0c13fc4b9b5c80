#pragma once

#include <QObject>

#include <utility>

/// An object with published fields that notifies its observers just before one changes.
///
/// `objectWillChange` and the `...WillChange` signals are for C++ observers: they run inside the assignment,
/// while the old value is still readable, on every assignment, an equal one too, and must not write back. The
/// `...Changed` signals are for QML: they follow a real change.
///
/// All state that an object stores and exposes is a published field, and only its setter notifies. A computed
/// property names a signal that is connected to the signals of the values it depends on.
class ObservableObject : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /// A published field is about to change.
    void objectWillChange();

protected:
    /// Every change of a published field goes through this: `willChange` notifies the C++ observers, `change`
    /// makes the change and returns whether the value differs, and only then does `changed` notify QML.
    /// Returns whether the value differs.
    template <typename WillChange, typename Change, typename Changed>
    bool publishChange(WillChange willChange, Change change, Changed changed) {
        Q_EMIT objectWillChange();
        willChange();
        const bool isRealChange = change();
        if (isRealChange)
            changed();
        return isRealChange;
    }

    /// Assigns the field. `didSet` may assign again as part of the same change; `isBeingSet` is true while it
    /// runs.
    template <typename Value, typename DidSet>
    static bool assignPublished(Value &field, bool &isBeingSet, Value newValue, DidSet didSet) {
        const Value oldValue = std::exchange(field, std::move(newValue));
        const bool isPartOfAnother = std::exchange(isBeingSet, true);
        didSet();
        isBeingSet = isPartOfAnother;
        return !isPartOfAnother && !(field == oldValue);
    }
};

/// Declares a published field with a public setter: property `name`, getter `name()`, member `m_name`, the
/// setter named `setter`, and the signals `nameWillChange(newValue)` and `nameChanged()`. The initial value
/// is the type's default.
///
/// The optional statement after `setter` runs once the new value is stored and may assign again; QML is
/// notified last, and once for the whole assignment.
#define TOLMI_PUBLISHED(type, name, setter, ...)                                                             \
    Q_PROPERTY(type name READ name WRITE setter NOTIFY name##Changed)                                        \
    TOLMI_PUBLISHED_FIELD(type, name, setter, public, __VA_ARGS__)

/// The same with a private setter.
#define TOLMI_PUBLISHED_READONLY(type, name, setter, ...)                                                    \
    Q_PROPERTY(type name READ name NOTIFY name##Changed)                                                     \
    TOLMI_PUBLISHED_FIELD(type, name, setter, private, __VA_ARGS__)

/// Common part of the two macros above.
#define TOLMI_PUBLISHED_FIELD(type, name, setter, accessOfSetter, ...)                                       \
public:                                                                                                      \
    const type &name() const {                                                                               \
        return m_##name;                                                                                     \
    }                                                                                                        \
    Q_SIGNAL void name##WillChange(const type &newValue);                                                    \
    Q_SIGNAL void name##Changed();                                                                           \
    accessOfSetter:                                                                                          \
    void setter(type newValue) {                                                                             \
        publishChange([&] { Q_EMIT name##WillChange(newValue); },                                            \
            [&] {                                                                                            \
                return assignPublished(                                                                      \
                    m_##name, m_##name##IsBeingSet, std::move(newValue), [&] { __VA_ARGS__; });              \
            },                                                                                               \
            [&] { Q_EMIT name##Changed(); });                                                                \
    }                                                                                                        \
                                                                                                             \
private:                                                                                                     \
    type m_##name {};                                                                                        \
    bool m_##name##IsBeingSet = false;
