#include "TolmiApp/Audio/LiveAudioCapture.h"

#include "Foundation/Log.h"
#include "TolmiApp/Audio/AudioMeterMath.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <deque>
#include <new>

namespace {
using SharedBuffer = std::shared_ptr<const AudioBuffer>;

/// Sets both the rate of the meter and how finely the pre-roll is cut.
constexpr int tapBufferSize = 1024;

qint64 frameCount(const AudioFormat &format, double seconds) {
    const double frames = std::trunc(format.sampleRate * seconds);
    // 2^63 is a double, the greatest 64-bit integer is not.
    constexpr double limit = 9223372036854775808.0;
    if (!(frames >= -limit && frames < limit)) {
        logLine(QStringLiteral("Tolmi: the pre-roll of %1 s at %2 Hz has no number of frames")
                    .arg(seconds)
                    .arg(format.sampleRate));
        std::abort();
    }
    return qint64(frames);
}

/// Null when there is no memory for it.
SharedBuffer copy(const AudioBuffer &buffer) {
    try {
        return std::make_shared<const AudioBuffer>(buffer);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

void ensureEngineRunning(AudioEngine &engine) {
    if (!engine.isRunning())
        engine.start();
}
} // namespace

/// What the processing queue owns: nothing else touches it after construction.
struct LiveAudioCapture::Recording {
    explicit Recording(qint64 frames)
        : maxPreRollFrames(frames) { }

    void process(const SharedBuffer &buffer);
    void begin(std::unique_ptr<AudioFileWriter> file);
    void end();

    const qint64 maxPreRollFrames;
    /// Oldest first.
    std::deque<SharedBuffer> preRollBuffers;
    qint64 preRollFrameCount = 0;
    std::unique_ptr<AudioFileWriter> outputFile;
    bool isRecording = false;
    double latestLevel = 0.0;
    /// The highest level since the capture was made, never reset.
    double latestPreRollPeak = 0.0;

private:
    void appendToPreRoll(const SharedBuffer &buffer);
    void writeLive(const AudioBuffer &buffer);
    double level(const AudioBuffer &buffer) const;
};

void LiveAudioCapture::Recording::process(const SharedBuffer &buffer) {
    latestLevel = level(*buffer);
    latestPreRollPeak = std::max(latestPreRollPeak, latestLevel);
    appendToPreRoll(buffer);
    writeLive(*buffer);
}

void LiveAudioCapture::Recording::appendToPreRoll(const SharedBuffer &buffer) {
    preRollBuffers.push_back(buffer);
    preRollFrameCount += buffer->frameLength;
    while (preRollFrameCount > maxPreRollFrames && !preRollBuffers.empty()) {
        preRollFrameCount -= preRollBuffers.front()->frameLength;
        preRollBuffers.pop_front();
    }
}

void LiveAudioCapture::Recording::writeLive(const AudioBuffer &buffer) {
    if (!isRecording || !outputFile)
        return;
    try {
        outputFile->write(buffer);
    } catch (const std::exception &) {
        // Words may go on for long after a full disk has room again: the next buffer gets its own chance.
    }
}

double LiveAudioCapture::Recording::level(const AudioBuffer &buffer) const {
    if (buffer.channels.empty())
        return latestLevel;
    if (buffer.frameLength == 0)
        return 0.0;
    float squares = 0.0F;
    for (const float sample : buffer.channels.front())
        squares += sample * sample;
    const float rootMeanSquare = std::sqrt(squares / float(buffer.frameLength));
    // Silence must not reach the logarithm as zero.
    const float decibels = 20.0F * std::log10(std::max(rootMeanSquare, 0.000001F));
    return AudioMeterMath::normalizedLevel(decibels);
}

void LiveAudioCapture::Recording::begin(std::unique_ptr<AudioFileWriter> file) {
    outputFile = std::move(file);
    isRecording = true;
    try {
        for (const SharedBuffer &buffer : preRollBuffers)
            outputFile->write(*buffer);
    } catch (...) {
        end();
        throw;
    }
}

void LiveAudioCapture::Recording::end() {
    isRecording = false;
    outputFile = nullptr;
}

LiveAudioCapture::LiveAudioCapture(Platform platform, double preRollSeconds)
    : m_platform(platform)
    , m_recording(std::make_shared<Recording>(frameCount(platform.engine.inputFormat(), preRollSeconds)))
    , m_engineQueue(QStringLiteral("Tolmi.LiveAudioCapture.engine"))
    , m_processingQueue(QStringLiteral("Tolmi.LiveAudioCapture.processing")) {
    const std::weak_ptr<Recording> weakRecording = m_recording;
    m_platform.engine.installTap(tapBufferSize, [this, weakRecording](const AudioBuffer &buffer) {
        if (!weakRecording.expired())
            enqueue(buffer);
    });
}

void LiveAudioCapture::enqueue(const AudioBuffer &buffer) {
    SharedBuffer ownCopy = copy(buffer);
    if (!ownCopy)
        return;
    const std::weak_ptr<Recording> weakRecording = m_recording;
    m_processingQueue.async([weakRecording, ownCopy = std::move(ownCopy)] {
        if (const auto recording = weakRecording.lock())
            recording->process(ownCopy);
    });
}

LiveAudioCapture::~LiveAudioCapture() {
    m_engineQueue.sync([this] {
        m_platform.engine.removeTap();
        m_platform.engine.stop();
    });
    // What still waits on the queues ends without work while they are joined.
    m_recording = nullptr;
}

void LiveAudioCapture::warmupIfAuthorized() {
    if (m_platform.permission.status() != AuthorizationStatus::Authorized)
        return;
    const std::weak_ptr<Recording> weakRecording = m_recording;
    m_engineQueue.async([&engine = m_platform.engine, weakRecording] {
        if (weakRecording.expired())
            return;
        try {
            ensureEngineRunning(engine);
        } catch (const std::exception &) {
            // Nobody waits for a warm engine; a recording that needs it tries again and reports.
        }
    });
}

void LiveAudioCapture::startRecording(const FileURL &url) {
    m_engineQueue.sync([this] { ensureEngineRunning(m_platform.engine); });
    m_platform.fileManager.createDirectory(url.deletingLastPathComponent());
    auto file = m_platform.audioFiles.create(url, m_platform.engine.inputFormat());
    m_processingQueue.sync([this, &file] { m_recording->begin(std::move(file)); });
}

void LiveAudioCapture::stopRecording() {
    m_processingQueue.sync([this] { m_recording->end(); });
}

double LiveAudioCapture::currentLevel() {
    double level = 0;
    m_processingQueue.sync([this, &level] { level = m_recording->latestLevel; });
    return level;
}

double LiveAudioCapture::currentPreRollPeak() {
    double peak = 0;
    m_processingQueue.sync([this, &peak] { peak = m_recording->latestPreRollPeak; });
    return peak;
}
