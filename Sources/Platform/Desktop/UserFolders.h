#pragma once

#include "Foundation/FileURL.h"

/// The user's download folder. It need not exist.
FileURL downloadsDirectory();
