#pragma once

#include "TolmiApp/DictationLive/DictationLiveModel.h"
#include "Views/FlowFixture.h"

#include <optional>

/// The model of the dictation workspace.
class DictationLiveFixture : public FlowFixture {
    Q_OBJECT
    Q_PROPERTY(DictationLiveModel *model READ model CONSTANT)

public:
    DictationLiveFixture() { m_model.emplace(manager, DictationLiveModel::Platform { clock, pasteboard }); }

    DictationLiveModel *model() { return &*m_model; }

private:
    std::optional<DictationLiveModel> m_model;
};
