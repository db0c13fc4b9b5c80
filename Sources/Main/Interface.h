#pragma once

#include "Platform/Availability.h"
#include "TolmiApp/Navigation/StudioDestination.h"

#include <functional>
#include <memory>

class AppUpdater;
class DictationFlowManager;
class TranscriptionHistory;
struct Adapters;

/// Builds and owns every window but the overlay: the status item, the popup and the Studio.
class Interface {
public:
    /// What the windows show. The adapters and the updater outlive the interface.
    struct Program {
        Adapters &adapters;
        std::shared_ptr<DictationFlowManager> flow;
        std::shared_ptr<TranscriptionHistory> history;
        AppUpdater &updater;
        /// Ends the program.
        std::function<void()> quit;
    };

    /// Shows the status item. Loads no view.
    explicit Interface(Program program);
    ~Interface();

    /// Whether the desktop shows the status item.
    Availability statusItemAvailability() const;
    /// Whether the user has the status item, or has had the Studio, to reach everything else from.
    bool isInReach() const;

    /// Loads the Studio, which takes its time, and leaves it closed.
    void prepareStudio();
    /// Opens the Studio at a workspace, or brings it to the front.
    void openStudio(StudioDestination destination);
    /// The same, at the workspace that it shows or showed last.
    void openStudio();

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};
