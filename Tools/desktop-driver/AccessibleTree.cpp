#include "desktop-driver/AccessibleTree.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <functional>

namespace {
// Stops the recursion if a window contains itself.
constexpr int deepest = 60;

QList<AccessibleElement::Address> addressesIn(QDBusPendingCall &answer) {
    QList<AccessibleElement::Address> addresses;
    answer.waitForFinished();
    if (answer.isError())
        return addresses;
    const auto list = answer.reply().arguments().value(0).value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString service;
        QDBusObjectPath path;
        list.beginStructure();
        list >> service >> path;
        list.endStructure();
        addresses.append({ service, path.path() });
    }
    list.endArray();
    return addresses;
}

quint64 statesIn(QDBusPendingCall &answer) {
    answer.waitForFinished();
    const auto words = qdbus_cast<QList<uint>>(answer.reply().arguments().value(0));
    return words.value(0) | quint64(words.value(1)) << 32;
}

struct Node {
    AccessibleElement element;
    std::vector<size_t> children;
};
} // namespace

void AccessibleTree::refresh(std::vector<AccessibleElement> &elements) {
    struct Questions {
        QDBusPendingCall role;
        QDBusPendingCall name;
        QDBusPendingCall states;
    };
    const QString interface = QStringLiteral("Accessible");
    std::vector<Questions> questions;
    questions.reserve(elements.size());
    for (const AccessibleElement &each : elements) {
        questions.push_back({ each.call(interface, QStringLiteral("GetRoleName")),
            each.property(interface, QStringLiteral("Name")),
            each.call(interface, QStringLiteral("GetState")) });
    }
    for (size_t index = 0; index < elements.size(); ++index) {
        QDBusPendingReply<QString> role = questions[index].role;
        QDBusPendingReply<QDBusVariant> name = questions[index].name;
        role.waitForFinished();
        name.waitForFinished();
        elements[index].m_role = role.isError() ? QString() : role.value();
        elements[index].m_name = name.isError() ? QString() : name.value().variant().toString();
        elements[index].m_states = statesIn(questions[index].states);
    }
}

std::vector<AccessibleElement> AccessibleTree::under(const AccessibleElement &root) {
    std::vector<Node> nodes { { root, {} } };
    size_t levelBegin = 0;
    for (int depth = 0; depth < deepest && levelBegin < nodes.size(); ++depth) {
        const size_t levelEnd = nodes.size();
        std::vector<QDBusPendingCall> questions;
        for (size_t index = levelBegin; index < levelEnd; ++index)
            questions.push_back(
                nodes[index].element.call(QStringLiteral("Accessible"), QStringLiteral("GetChildren")));
        for (size_t index = levelBegin; index < levelEnd; ++index) {
            for (const AccessibleElement::Address &address : addressesIn(questions[index - levelBegin])) {
                nodes[index].children.push_back(nodes.size());
                nodes.push_back({ AccessibleElement(root.m_bus, address), {} });
            }
        }
        levelBegin = levelEnd;
    }
    std::vector<AccessibleElement> elements;
    const std::function<void(size_t)> append = [&](size_t index) {
        elements.push_back(nodes[index].element);
        for (const size_t child : nodes[index].children)
            append(child);
    };
    append(0);
    refresh(elements);
    return elements;
}
