#pragma once

#include "Platform/Process.h"

class HeldChildren;

/// Starts processes on Linux. A child has only the descriptors 0, 1 and 2, no blocked signals, and default
/// signal handlers. Any thread may call it.
class LinuxProcessLauncher final : public ProcessLauncher {
public:
    /// Resets SIGCHLD to its default: if this process inherited it as ignored, exit statuses would be lost.
    LinuxProcessLauncher();

    std::unique_ptr<Process> launch(const FileURL &executable, const QStringList &arguments) override;
    void terminateAll() override;

private:
    std::shared_ptr<HeldChildren> m_children;
};
