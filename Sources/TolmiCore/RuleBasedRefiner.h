#pragma once

#include "TolmiCore/TextRefiner.h"

/// Removes Romanian and English filler words and repairs punctuation and case after them, by fixed rules that
/// apply to every language. Never fails or suspends. Any thread.
class RuleBasedRefiner final : public TextRefiner {
public:
    Task<QString> refine(QString text) override;
};
