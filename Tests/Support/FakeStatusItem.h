#pragma once

#include "Platform/StatusItem.h"

#include <QStringList>

/// A status item that remembers what it shows.
class FakeStatusItem final : public StatusItem {
public:
    QString toolTip;
    std::vector<StatusMenuEntry> menu;
    /// Every message, "TITLE: TEXT".
    QStringList messages;
    /// What stands as the item's place.
    std::optional<QRect> place { QRect(1800, 4, 24, 24) };
    std::function<void()> activationObserver;

    /// Presses the item as a user does.
    void activate() {
        if (activationObserver)
            activationObserver();
    }

    Availability availability() override { return Availability::available(); }
    void setToolTip(const QString &text) override { toolTip = text; }
    void setMenu(const std::vector<StatusMenuEntry> &entries) override { menu = entries; }
    void setActivationObserver(std::function<void()> observer) override {
        activationObserver = std::move(observer);
    }
    std::optional<QRect> geometry() override { return place; }
    void showMessage(const QString &title, const QString &text) override {
        messages.append(title + QStringLiteral(": ") + text);
    }
};
