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

    Availability availability() override { return Availability::available(); }
    void setToolTip(const QString &text) override { toolTip = text; }
    void setMenu(const std::vector<StatusMenuEntry> &entries) override { menu = entries; }
    void showMessage(const QString &title, const QString &text) override {
        messages.append(title + QStringLiteral(": ") + text);
    }
};
