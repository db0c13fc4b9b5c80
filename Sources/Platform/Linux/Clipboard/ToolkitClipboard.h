#pragma once

#include "Platform/Pasteboard.h"

/// What the windows of this program itself have put on the clipboard. They cannot answer while the main
/// thread asks, so it is read where it lies. Main thread only.
namespace ToolkitClipboard {
std::vector<PasteboardItem> items();
} // namespace ToolkitClipboard
