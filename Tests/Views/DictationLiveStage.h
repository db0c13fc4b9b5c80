#pragma once

#include "TolmiApp/DictationLive/DictationLiveModel.h"
#include "Views/FlowStage.h"

#include <optional>

/// The model of the stage for dictating.
class DictationLiveStage : public FlowStage {
    Q_OBJECT
    Q_PROPERTY(DictationLiveModel *model READ model CONSTANT)

public:
    DictationLiveStage() { m_model.emplace(manager, DictationLiveModel::Platform { clock, pasteboard }); }

    DictationLiveModel *model() { return &*m_model; }

private:
    std::optional<DictationLiveModel> m_model;
};
