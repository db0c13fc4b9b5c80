#pragma once

#include "Foundation/Error.h"

/// The text of the SystemError that `work` throws, or "no error".
template <typename Work>
QString systemErrorOf(Work work) {
    try {
        work();
    } catch (const SystemError &error) {
        return error.errorDescription();
    }
    return QStringLiteral("no error");
}
