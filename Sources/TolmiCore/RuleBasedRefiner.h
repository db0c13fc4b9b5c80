#pragma once

#include "TolmiCore/TextRefiner.h"

/// Takes filler words of Romanian and English out of a text and mends punctuation and case after them, by
/// fixed rules, whatever the language. It neither fails nor suspends. Any thread.
class RuleBasedRefiner final : public TextRefiner {
public:
    Task<QString> refine(QString text) override;
};
