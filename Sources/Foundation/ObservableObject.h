#pragma once

#include <QObject>

#include <utility>

/// An object with published fields, which tells its observers just before one changes.
///
/// `objectWillChange` and the `...WillChange` signals are for C++ observers: they run inside the assignment,
/// while the old value is still readable, on every assignment, an equal one too, and must not write back. The
/// `...Changed` signals are for QML: they follow a real change.
///
/// Whatever an object keeps and shows is a published field, and only its setter tells of it. A property that
/// is made of other values names a signal that is connected to the signals of those.
class ObservableObject : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /// A published field is about to change.
    void objectWillChange();

protected:
    /// The way of every change of a published field: `willChange` tells the C++ observers, `change` makes the
    /// change and returns whether it is a real one, and of that `changed` tells QML. Returns the same.
    template <typename WillChange, typename Change, typename Changed>
    bool publishChange(WillChange willChange, Change change, Changed changed) {
        Q_EMIT objectWillChange();
        willChange();
        const bool isRealChange = change();
        if (isRealChange)
            changed();
        return isRealChange;
    }

    /// The change that is an assignment. `didSet` may assign again, which is part of the same change;
    /// `isBeingSet` marks that while it runs.
    template <typename Value, typename DidSet>
    static bool assignPublished(Value &field, bool &isBeingSet, Value newValue, DidSet didSet) {
        const Value oldValue = std::exchange(field, std::move(newValue));
        const bool isPartOfAnother = std::exchange(isBeingSet, true);
        didSet();
        isBeingSet = isPartOfAnother;
        return !isPartOfAnother && !(field == oldValue);
    }
};

/// Declares a published field that everybody may set: property `name`, `name()`, `m_name`, the setter that is
/// given as `setter`, and the signals `nameWillChange(newValue)` and `nameChanged()`. It starts as the type's
/// empty value.
///
/// What follows `setter` may be left out. It is the field's rule, a statement that runs after the new value
/// is stored and may assign again; QML hears of the change last, and once for the whole assignment.
#define TOLMI_PUBLISHED(type, name, setter, ...)                                                             \
    Q_PROPERTY(type name READ name WRITE setter NOTIFY name##Changed)                                        \
    TOLMI_PUBLISHED_FIELD(type, name, setter, public, __VA_ARGS__)

/// The same without a setter for others: it is private.
#define TOLMI_PUBLISHED_READONLY(type, name, setter, ...)                                                    \
    Q_PROPERTY(type name READ name NOTIFY name##Changed)                                                     \
    TOLMI_PUBLISHED_FIELD(type, name, setter, private, __VA_ARGS__)

/// What both have in common.
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
