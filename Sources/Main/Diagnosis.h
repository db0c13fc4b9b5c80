#pragma once

#include "Platform/OperationMethod.h"

#include <vector>

class SettingsStore;
class StudioHealthCheckService;
struct Adapters;

/// The checks of what a dictation needs, on this desktop. The adapters outlive them.
StudioHealthCheckService healthChecks(Adapters &adapters);

/// How each operation of a dictation is done here and what may keep it from working, in English. Asks nothing
/// that would have to be waited for.
std::vector<OperationMethod> diagnosis(Adapters &adapters, const SettingsStore &settings);
