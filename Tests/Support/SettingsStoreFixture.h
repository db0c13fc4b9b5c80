#pragma once

#include "Platform/BundleInfo.h"
#include "Support/FakeFileManager.h"
#include "Support/FakeUserDefaults.h"
#include "Support/VirtualClock.h"
#include "TolmiApp/Settings/SettingsStore.h"

/// The settings as a new user has them, over a platform in memory.
struct SettingsStoreFixture {
    FakeUserDefaults defaults;
    FakeFileManager files;
    VirtualClock clock;
    BundleInfo bundle;
    SettingsStore store { defaults, files, clock, bundle };
};
