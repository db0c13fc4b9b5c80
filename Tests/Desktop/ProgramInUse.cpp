#include "Desktop/ProgramInUse.h"

#include "dictate/Home.h"

#include "Support/Print.h"

#include <QFile>
#include <QJsonDocument>

#include <algorithm>
#include <stdexcept>

using State = AccessibleElement::State;

namespace {
AccessibleElement find(const AccessibleProgram &program, const QString &role, const QString &name) {
    const auto found = program.find(role, name, patience);
    if (!found)
        throw std::runtime_error(
            (role + u' ' + name + QStringLiteral(" is not among\n") + program.described()).toStdString());
    return *found;
}
} // namespace

void ProgramInUse::start() {
    ASSERT_TRUE(m_program.start(QStringLiteral(TOLMI_PROGRAM))) << m_program.output().toStdString();
    m_whole.emplace(m_program.processId());
    m_front = m_whole;
    const auto hasKeyboard = [this] {
        const auto elements = m_whole->elements();
        return std::any_of(elements.begin(), elements.end(),
            [](const AccessibleElement &each) { return each.is(State::Active); });
    };
    ASSERT_TRUE(waitUntil(hasKeyboard, patience)) << m_whole->described().toStdString();
}

void ProgramInUse::enterDialog(const QString &name) {
    m_front = m_whole->within(dialog(name));
}

bool ProgramInUse::leavesDialog(const QString &name) {
    m_front = m_whole;
    return waitUntil([&] { return !isThere(QStringLiteral("dialog"), name); }, patience);
}

AccessibleElement ProgramInUse::dialog(const QString &name) const {
    return find(*m_whole, QStringLiteral("dialog"), name);
}

AccessibleElement ProgramInUse::control(const QString &role, const QString &name) const {
    return find(*m_front, role, name);
}

bool ProgramInUse::isThere(const QString &role, const QString &name) const {
    return m_front->find(role, name, 0).has_value();
}

bool ProgramInUse::becomesUsable(const AccessibleElement &element) const {
    return waitUntil([&] { return element.now().is(State::Focusable); }, patience);
}

void ProgramInUse::click(const QString &role, const QString &name) {
    m_user.click(control(role, name).rectangle().center());
}

bool ProgramInUse::fill(const AccessibleElement &field, const QString &text) {
    if (!waitUntil([&] { return field.now().is(State::Focused); }, patience))
        return false;
    m_user.typeWithControl("a");
    m_user.enter(text);
    return waitUntil([&] { return field.text() == text; }, patience);
}

QJsonValue ProgramInUse::stored(const QString &key) {
    QFile file(settingsPath());
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object().value(key)
                                          : QJsonValue(QJsonValue::Undefined);
}

bool ProgramInUse::comesToBeStored(const QString &key, const QJsonValue &value) {
    return waitUntil([&] { return stored(key) == value; }, patience);
}
