#pragma once

/// Lets everything else run before the calling thread, for good. Where the system refuses, nothing changes.
void lowerPriorityOfCurrentThread();
