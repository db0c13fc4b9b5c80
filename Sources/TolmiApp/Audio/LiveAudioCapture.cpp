#include "TolmiApp/Audio/LiveAudioCapture.h"

#include "Foundation/Log.h"
#include "Foundation/QueuedWork.h"
#include "TolmiApp/Audio/AudioMeterMath.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <deque>
#include <new>

namespace {
using SharedBuffer = std::shared_ptr<const AudioBuffer>;

/// Frames; determines the update rate of the meter and the granularity of the pre-roll.
constexpr int tapBufferSize = 1024;

qint64 frameCount(const AudioFormat &format, double seconds) {
    const double frames = std::trunc(format.sampleRate * seconds);
    // 2^63 is representable as a double, the largest 64-bit integer is not.
    constexpr double limit = 9223372036854775808.0;
    if (!(frames >= -limit && frames < limit)) {
        logLine(QStringLiteral("Tolmi: the pre-roll of %1 s at %2 Hz has no number of frames")
                    .arg(seconds)
                    .arg(format.sampleRate));
        std::abort();
    }
    return qint64(frames);
}

/// Null if out of memory.
SharedBuffer copy(const AudioBuffer &buffer) {
    try {
        return std::make_shared<const AudioBuffer>(buffer);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

double seconds(const AudioBuffer &buffer) {
    return double(buffer.frameLength) / buffer.format.sampleRate;
}

void ensureEngineRunning(AudioEngine &engine) {
    if (!engine.isRunning())
        engine.start();
}

/// Seconds: how often a recording checks that the engine runs, when it reports missing sound, and how much
/// silence it writes at most (in case the clock is set).
constexpr double checkInterval = 0.25;
constexpr double soundTimeout = 3.0;
constexpr double longestGap = 4.0;
} // namespace

/// One attempt to start the engine, shared by all callers.
struct LiveAudioCapture::EngineStart {
    std::atomic<bool> hasEnded = false;
    /// Accessed on the engine's queue.
    std::exception_ptr failure;

    void run(AudioEngine &engine) {
        try {
            ensureEngineRunning(engine);
        } catch (const std::exception &) {
            failure = std::current_exception();
        }
        hasEnded = true;
    }
};

/// State of the periodic check that a recording still gets sound.
struct LiveAudioCapture::Watch {
    Date begin;
    /// The time of the last sound before the engine lost its source.
    std::optional<Date> lostSince;
};

/// State of the processing queue, accessed only there after construction.
struct LiveAudioCapture::Recording {
    explicit Recording(qint64 frames)
        : maxPreRollFrames(frames) { }

    void process(const SharedBuffer &buffer, Date received);
    void begin(std::unique_ptr<AudioFileWriter> file, Date now);
    void end();

    const qint64 maxPreRollFrames;
    /// Oldest first.
    std::deque<SharedBuffer> preRollBuffers;
    qint64 preRollFrameCount = 0;
    std::unique_ptr<AudioFileWriter> outputFile;
    bool isRecording = false;
    double latestLevel = 0.0;
    /// The highest level since construction, never reset.
    double latestPreRollPeak = 0.0;
    /// The engine has lost its source, so there is a gap before the next buffer.
    bool isInGap = false;

private:
    void appendToPreRoll(const SharedBuffer &buffer);
    void writeLive(const AudioBuffer &buffer, Date received);
    void fillGap(const AudioFormat &format, Date end);
    void write(const AudioBuffer &buffer);
    double level(const AudioBuffer &buffer) const;

    /// The time up to which the file contains sound.
    Date m_recordedUntil {};
};

void LiveAudioCapture::Recording::process(const SharedBuffer &buffer, Date received) {
    latestLevel = level(*buffer);
    latestPreRollPeak = std::max(latestPreRollPeak, latestLevel);
    appendToPreRoll(buffer);
    writeLive(*buffer, received);
}

void LiveAudioCapture::Recording::appendToPreRoll(const SharedBuffer &buffer) {
    preRollBuffers.push_back(buffer);
    preRollFrameCount += buffer->frameLength;
    while (preRollFrameCount > maxPreRollFrames && !preRollBuffers.empty()) {
        preRollFrameCount -= preRollBuffers.front()->frameLength;
        preRollBuffers.pop_front();
    }
}

void LiveAudioCapture::Recording::writeLive(const AudioBuffer &buffer, Date received) {
    if (!isRecording || !outputFile)
        return;
    if (isInGap)
        fillGap(buffer.format, received + -seconds(buffer));
    isInGap = false;
    write(buffer);
}

/// Fills the gap before `end` with silence, so that the file is as long as the recording took.
void LiveAudioCapture::Recording::fillGap(const AudioFormat &format, Date end) {
    const double missing = std::min(end - m_recordedUntil, longestGap);
    if (missing <= 0)
        return;
    const qint64 frames = std::llround(format.sampleRate * missing);
    const std::vector<float> silence(size_t(frames), 0.0F);
    write({ format, std::vector<std::vector<float>>(size_t(format.channelCount), silence), frames });
    m_recordedUntil = end;
}

void LiveAudioCapture::Recording::write(const AudioBuffer &buffer) {
    m_recordedUntil = m_recordedUntil + seconds(buffer);
    try {
        outputFile->write(buffer);
    } catch (const std::exception &) {
        // A full disk may have space again later, so the next buffer tries again.
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
    // Avoids the logarithm of zero.
    const float decibels = 20.0F * std::log10(std::max(rootMeanSquare, 0.000001F));
    return AudioMeterMath::normalizedLevel(decibels);
}

void LiveAudioCapture::Recording::begin(std::unique_ptr<AudioFileWriter> file, Date now) {
    outputFile = std::move(file);
    isRecording = true;
    isInGap = false;
    m_recordedUntil = now;
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
    const Date now = m_platform.clock.now();
    m_lastSound = now.secondsSinceReferenceDate;
    const std::weak_ptr<Recording> weakRecording = m_recording;
    m_processingQueue.async([weakRecording, now, ownCopy = std::move(ownCopy)] {
        if (const auto recording = weakRecording.lock())
            recording->process(ownCopy, now);
    });
}

LiveAudioCapture::~LiveAudioCapture() {
    m_watch = nullptr;
    m_engineQueue.sync([this] {
        m_platform.engine.removeTap();
        m_platform.engine.stop();
    });
    // Work still queued does nothing once the recording is gone.
    m_recording = nullptr;
}

void LiveAudioCapture::warmupIfAuthorized() {
    if (m_platform.permission.status() != AuthorizationStatus::Authorized)
        return;
    // A failure is ignored here; the next recording tries again and reports it.
    startEngine();
}

/// The pending start, or a new one in the background.
std::shared_ptr<const LiveAudioCapture::EngineStart> LiveAudioCapture::startEngine() {
    if (m_engineStart && !m_engineStart->hasEnded)
        return m_engineStart;
    m_engineStart = std::make_shared<EngineStart>();
    const std::weak_ptr<Recording> weakRecording = m_recording;
    m_engineQueue.async([&engine = m_platform.engine, weakRecording, start = m_engineStart] {
        if (!weakRecording.expired())
            start->run(engine);
    });
    return m_engineStart;
}

Task<> LiveAudioCapture::prepareToRecord() {
    if (m_platform.engine.isRunning())
        co_return;
    // Queued after the start, so it runs once that has ended.
    const auto rethrow = [start = startEngine()] {
        if (start->failure)
            std::rethrow_exception(start->failure);
    };
    co_await runOn(m_engineQueue, m_platform.clock, rethrow);
}

void LiveAudioCapture::startRecording(const FileURL &url) {
    if (!m_platform.engine.isRunning())
        m_engineQueue.sync([this] { ensureEngineRunning(m_platform.engine); });
    m_platform.fileManager.createDirectory(url.deletingLastPathComponent());
    auto file = m_platform.audioFiles.create(url, m_platform.engine.inputFormat());
    const Date now = m_platform.clock.now();
    m_processingQueue.sync([this, &file, now] { m_recording->begin(std::move(file), now); });
    m_watch = std::make_shared<Watch>(Watch { now, std::nullopt });
    launch(keepWatch(this, m_watch));
}

Task<> LiveAudioCapture::keepWatch(LiveAudioCapture *capture, std::weak_ptr<Watch> weakWatch) {
    for (Clock &clock = capture->m_platform.clock;;) {
        co_await sleep(clock, checkInterval);
        const auto watch = weakWatch.lock();
        // Without the watch, the capture may be destroyed too.
        if (!watch)
            co_return;
        capture->checkForSound(*watch);
    }
}

void LiveAudioCapture::checkForSound(Watch &watch) {
    if (m_platform.engine.isRunning()) {
        watch.lostSince = std::nullopt;
        return;
    }
    if (!watch.lostSince)
        watch.lostSince = std::max(watch.begin, Date { m_lastSound });
    const std::weak_ptr<Recording> weakRecording = m_recording;
    m_processingQueue.async([weakRecording] {
        if (const auto recording = weakRecording.lock())
            recording->isInGap = true;
    });
    startEngine();
    if (m_platform.clock.now() - *watch.lostSince < soundTimeout)
        return;
    watch.lostSince = std::nullopt;
    if (onSoundLost)
        onSoundLost();
}

void LiveAudioCapture::stopRecording() {
    m_watch = nullptr;
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
