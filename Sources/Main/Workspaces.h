#pragma once

#include "Main/Interface.h"
#include "Text/DateTexts.h"
#include "TolmiApp/Profile/ProfileAvatarEditor.h"
#include "TolmiApp/Studio/TolmiStudioWindowModel.h"

/// Makes the models of everything that the Studio shows.
class Workspaces {
public:
    /// `program` outlives this, and this outlives the models.
    explicit Workspaces(const Interface::Program &program);

    /// What the Studio's window shows and can do.
    TolmiStudioWindowModel::Content content();

private:
    std::unique_ptr<QObject> commandCenter(TolmiStudioWindowModel &studio);
    std::unique_ptr<QObject> profile(TolmiStudioWindowModel &studio);
    std::unique_ptr<QObject> dictationLive();
    std::unique_ptr<QObject> history(TolmiStudioWindowModel &studio);
    std::unique_ptr<QObject> templates(TolmiStudioWindowModel &studio);
    std::unique_ptr<QObject> health();
    std::unique_ptr<QObject> settings(TolmiStudioWindowModel &studio);
    std::unique_ptr<QObject> onboarding(TolmiStudioWindowModel &studio);

    const Interface::Program &m_program;
    ProfileAvatarEditor m_avatarEditor;
    const DateTexts m_dates;
};
