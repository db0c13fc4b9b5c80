#pragma once

#include "Platform/LoginSession.h"

/// A session that is as old as it is told.
class FakeLoginSession final : public LoginSession {
public:
    std::optional<double> seconds;

    std::optional<double> age() const override { return seconds; }
};
