#pragma once

#include "Foundation/FileURL.h"

/// The folder where the user's programs put what they download. It need not exist.
FileURL downloadsDirectory();
