#pragma once

#include <QObject>

/// Counts the emissions of one signal from its construction on.
class SignalCounter {
public:
    template <typename Sender, typename Signal>
    SignalCounter(const Sender *sender, Signal signal) {
        QObject::connect(sender, signal, &m_context, [this] { ++m_count; });
    }

    int count() const { return m_count; }

private:
    QObject m_context;
    int m_count = 0;
};
