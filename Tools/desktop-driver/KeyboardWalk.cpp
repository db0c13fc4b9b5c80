#include "desktop-driver/KeyboardWalk.h"

#include "desktop-driver/AccessibleTree.h"
#include "dictate/Waiting.h"

#include <algorithm>
#include <functional>

using State = AccessibleElement::State;

namespace {
// More than the number of controls in any window.
constexpr size_t mostStops = 300;
// Seconds within which a key press moves the focus, if at all.
constexpr double patience = 3;

const QStringList rolesOfControls { QStringLiteral("check box"), QStringLiteral("combo box"),
    QStringLiteral("entry"), QStringLiteral("link"), QStringLiteral("list"), QStringLiteral("list item"),
    QStringLiteral("menu item"), QStringLiteral("page tab"), QStringLiteral("password text"),
    QStringLiteral("push button"), QStringLiteral("radio button"), QStringLiteral("slider"),
    QStringLiteral("spin button"), QStringLiteral("text"), QStringLiteral("toggle button") };

bool contains(const std::vector<AccessibleElement> &elements, const AccessibleElement &element) {
    return std::any_of(elements.begin(), elements.end(),
        [&](const AccessibleElement &each) { return each.address() == element.address(); });
}

QString placeOf(const AccessibleElement &element) {
    const QPoint center = element.rectangle().center();
    return QStringLiteral(" at %1, %2").arg(center.x()).arg(center.y());
}

// Qt reports every text as focusable, even static text and disabled fields.
bool isControl(const AccessibleElement &element) {
    const bool isField = element.role() == u"text";
    return element.is(State::Focusable) && element.role() != u"label"
        && (!isField || element.is(State::Editable));
}

std::vector<AccessibleElement> controlsOf(const AccessibleProgram &program) {
    std::vector<AccessibleElement> controls = program.elements();
    controls.erase(std::remove_if(controls.begin(), controls.end(), std::not_fn(isControl)), controls.end());
    return controls;
}

std::optional<AccessibleElement> focusedOf(std::vector<AccessibleElement> elements) {
    AccessibleTree::refresh(elements);
    const auto focused = std::find_if(elements.begin(), elements.end(),
        [](const AccessibleElement &each) { return each.is(State::Focused); });
    return focused == elements.end() ? std::nullopt : std::optional(*focused);
}

/// Presses Tab and returns the newly focused element, if the focus moved.
std::optional<AccessibleElement> nextByTab(VirtualUser &user, const AccessibleProgram &program,
    std::vector<AccessibleElement> &controls, const std::optional<AccessibleElement> &former) {
    std::optional<AccessibleElement> focused;
    user.type("Tab");
    waitUntil(
        [&] {
            focused = focusedOf(controls);
            // It may only just have appeared by scrolling.
            if (!focused) {
                controls = controlsOf(program);
                focused = focusedOf(controls);
            }
            return focused && (!former || !(focused->address() == former->address()));
        },
        patience);
    const bool hasMoved = focused && (!former || !(focused->address() == former->address()));
    return hasMoved ? focused : std::nullopt;
}
} // namespace

KeyboardWalk walkByTab(VirtualUser &user, const AccessibleProgram &program) {
    KeyboardWalk walk;
    std::vector<AccessibleElement> controls = controlsOf(program);
    auto stop = nextByTab(user, program, controls, focusedOf(controls));
    while (stop && !contains(walk.stops, *stop) && walk.stops.size() < mostStops) {
        walk.stops.push_back(*stop);
        stop = nextByTab(user, program, controls, walk.stops.back());
    }
    walk.returnsToStart = stop && !walk.stops.empty() && stop->address() == walk.stops.front().address();
    return walk;
}

namespace {
QStringList complaintsOfOneWalk(VirtualUser &user, const AccessibleProgram &program) {
    QStringList complaints;
    const KeyboardWalk walk = walkByTab(user, program);
    if (!walk.returnsToStart)
        complaints.append(QStringLiteral("Tab does not come round; it ends at ")
            + (walk.stops.empty() ? QStringLiteral("nothing") : walk.stops.back().described()));
    for (const AccessibleElement &each : controlsOf(program)) {
        if (each.name().trimmed().isEmpty())
            complaints.append(QStringLiteral("without a name: ") + each.described() + placeOf(each));
        if (!rolesOfControls.contains(each.role()))
            complaints.append(
                QStringLiteral("not the role of a control: ") + each.described() + placeOf(each));
        if (!contains(walk.stops, each))
            complaints.append(QStringLiteral("not reached by Tab: ") + each.described() + placeOf(each));
    }
    return complaints;
}
} // namespace

QStringList keyboardComplaints(VirtualUser &user, const AccessibleProgram &program) {
    const QStringList complaints = complaintsOfOneWalk(user, program);
    // The first walk may have begun before the window had set its initial focus and so missed a stop. A
    // control that is really unreachable is so a second time.
    return complaints.isEmpty() ? complaints : complaintsOfOneWalk(user, program);
}
