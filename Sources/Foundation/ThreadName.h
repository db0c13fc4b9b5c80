#pragma once

#include <QString>

/// Names the calling thread for debuggers and logs; the system may truncate the name.
void nameCurrentThread(const QString &name);
