#pragma once

#include "Platform/Process.h"

class HeldChildren;

/// Starts processes on Linux. A child has the descriptors 0, 1 and 2 and no other, no blocked signals, and
/// every signal at its default. Any thread may call it.
class LinuxProcessLauncher final : public ProcessLauncher {
public:
    /// Ends a disregard of the child signal, which this process may have inherited: with it every exit status
    /// is lost.
    LinuxProcessLauncher();

    std::unique_ptr<Process> launch(const FileURL &executable, const QStringList &arguments) override;
    void terminateAll() override;

private:
    std::shared_ptr<HeldChildren> m_children;
};
