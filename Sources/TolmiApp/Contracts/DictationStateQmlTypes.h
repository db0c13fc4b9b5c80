#pragma once

#include "TolmiApp/Contracts/DictationState.h"

#include <QtQml/qqml.h>

// Names the C++ types for views; the logic itself does not depend on QML.

/// The kinds of state, as DictationState.Recording and so on.
namespace DictationStateForViews {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(DictationState)
QML_NAMED_ELEMENT(DictationState)
} // namespace DictationStateForViews
