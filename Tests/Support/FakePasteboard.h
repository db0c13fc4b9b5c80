#pragma once

#include "Platform/Pasteboard.h"

#include <functional>

/// A clipboard in memory.
class FakePasteboard final : public Pasteboard {
public:
    std::vector<PasteboardItem> items() override {
        record(QStringLiteral("items"));
        return content;
    }
    void setDictatedText(const QString &text) override {
        record(QStringLiteral("setDictatedText ") + text);
        content = { PasteboardItem { { { pasteboardTextType, text.toUtf8() } } } };
        isMarked = true;
    }
    void setItems(const std::vector<PasteboardItem> &items) override {
        record(QStringLiteral("setItems"));
        content = items;
        isMarked = false;
    }
    void handOver() override { record(QStringLiteral("handOver")); }

    std::vector<PasteboardItem> content;
    /// Whether clipboard managers are asked not to keep the content.
    bool isMarked = false;
    std::vector<QString> calls;
    /// Called at each operation, with its name.
    std::function<void(const QString &)> onCall;

private:
    void record(const QString &call) {
        calls.push_back(call);
        if (onCall)
            onCall(call);
    }
};
