#include "TolmiApp/Audio/AudioRecorder.h"

#include "TolmiApp/Audio/AudioMeterMath.h"

#include <coroutine>

namespace {
/// Awaiting it requests microphone access and returns the user's answer.
struct AccessRequest {
    MicrophonePermission &permission;

    struct Awaiter {
        MicrophonePermission &permission;
        bool granted = false;

        bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<> waiting) {
            permission.requestAccess([this, waiting](bool answer) {
                granted = answer;
                waiting.resume();
            });
        }
        bool await_resume() const noexcept { return granted; }
    };
    Awaiter operator co_await() const { return { permission }; }
};
} // namespace

AudioRecorder::AudioRecorder(MicrophonePermission &permission, AudioFileRecorderFactory &recorders)
    : m_permission(permission)
    , m_recorders(recorders) { }

Task<bool> AudioRecorder::requestPermission() {
    switch (m_permission.status()) {
    case AuthorizationStatus::Authorized:
        co_return true;
    case AuthorizationStatus::NotDetermined: {
        const bool granted = co_await AccessRequest { m_permission };
        co_return granted;
    }
    case AuthorizationStatus::Denied:
    case AuthorizationStatus::Restricted:
        break;
    }
    co_return false;
}

void AudioRecorder::startRecording(const FileURL &url) {
    stopRecording();
    auto recorder = m_recorders.make(url, RecordingSettings {});
    if (!recorder->prepareToRecord() || !recorder->record())
        throw AudioRecorderError(AudioRecorderError::Kind::CouldNotStartRecording);
    m_recorder = std::move(recorder);
}

void AudioRecorder::stopRecording() {
    if (m_recorder)
        m_recorder->stop();
    m_recorder = nullptr;
}

double AudioRecorder::currentLevel() {
    return m_recorder ? AudioMeterMath::normalizedLevel(m_recorder->averagePower()) : 0.0;
}
