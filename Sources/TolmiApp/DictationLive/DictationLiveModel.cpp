#include "TolmiApp/DictationLive/DictationLiveModel.h"

DictationLiveModel::DictationLiveModel(std::shared_ptr<DictationFlowManager> flow, const Platform &platform)
    : m_flow(std::move(flow))
    , m_pasteboard(platform.pasteboard)
    , m_dictation(m_flow, platform.clock) {
    connect(m_flow.get(), &DictationFlowManager::lastTranscriptChanged, this,
        &DictationLiveModel::lastTranscriptChanged);
}

void DictationLiveModel::copyLastTranscript() {
    m_pasteboard.setItems({ PasteboardItem { { { pasteboardTextType, lastTranscript().toUtf8() } } } });
}
