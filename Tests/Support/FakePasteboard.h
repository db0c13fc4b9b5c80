#pragma once

#include "Platform/Pasteboard.h"

#include <algorithm>
#include <functional>

/// A clipboard in memory.
class FakePasteboard final : public Pasteboard {
public:
    void readAhead() override { record(QStringLiteral("readAhead")); }
    std::vector<PasteboardItem> items() override {
        record(QStringLiteral("items"));
        return content;
    }
    bool setDictatedText(const QString &text) override {
        record(QStringLiteral("setDictatedText ") + text);
        if (refusals > 0) {
            --refusals;
            return false;
        }
        content = dictated(text);
        return true;
    }
    bool holdsDictatedText() override {
        record(QStringLiteral("holdsDictatedText"));
        return isMarked();
    }
    void setItems(const std::vector<PasteboardItem> &items) override {
        record(QStringLiteral("setItems"));
        content = items;
    }
    void restore(const std::vector<PasteboardItem> &items) override {
        record(QStringLiteral("restore"));
        if (!items.empty())
            content = items;
    }
    void handOver() override { record(QStringLiteral("handOver")); }

    /// A dictated text as it stands on this clipboard, with its mark.
    static std::vector<PasteboardItem> dictated(const QString &text) {
        return { PasteboardItem {
            { { pasteboardTextType, text.toUtf8() }, { QStringLiteral("mark"), QByteArray() } } } };
    }
    /// Whether clipboard managers are asked not to keep the content.
    bool isMarked() const { return !content.empty() && content == dictated(text()); }
    QString text() const { return QString::fromUtf8(content.front().representations.front().second); }

    std::vector<PasteboardItem> content;
    /// How many of the next dictated texts it does not take.
    int refusals = 0;
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
