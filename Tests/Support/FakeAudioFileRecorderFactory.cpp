#include "Support/FakeAudioFileRecorderFactory.h"

#include <stdexcept>

namespace {
class FakeAudioFileRecorder final : public AudioFileRecorder {
public:
    explicit FakeAudioFileRecorder(std::shared_ptr<FakeAudioFileRecorderFactory::Recorder> recorder)
        : m_recorder(std::move(recorder)) { }
    ~FakeAudioFileRecorder() override { m_recorder->calls.push_back(QStringLiteral("destroy")); }

    bool prepareToRecord() override {
        m_recorder->calls.push_back(QStringLiteral("prepareToRecord"));
        return m_recorder->reply.canPrepare;
    }
    bool record() override {
        m_recorder->calls.push_back(QStringLiteral("record"));
        return m_recorder->reply.canRecord;
    }
    void stop() override { m_recorder->calls.push_back(QStringLiteral("stop")); }
    float averagePower() override { return m_recorder->reply.averagePower; }

private:
    std::shared_ptr<FakeAudioFileRecorderFactory::Recorder> m_recorder;
};
} // namespace

std::unique_ptr<AudioFileRecorder> FakeAudioFileRecorderFactory::make(
    const FileURL &url, const RecordingSettings &settings) {
    if (replies.empty())
        throw std::logic_error("the test expects no recorder");
    const Reply reply = replies.front();
    replies.pop_front();
    if (reply.failure)
        throw *reply.failure;
    recorders.push_back(std::make_shared<Recorder>(Recorder { url, settings, reply, {} }));
    return std::make_unique<FakeAudioFileRecorder>(recorders.back());
}
