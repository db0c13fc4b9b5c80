#include "Platform/Linux/Pulse/PulseOutputStream.h"

#include <pulse/context.h>
#include <pulse/operation.h>
#include <pulse/stream.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>
#include <vector>

namespace {
using std::chrono::steady_clock;

/// Sound buffered by the server: enough for a busy machine, short enough for volume changes to be heard soon.
constexpr double bufferSeconds = 0.3;
} // namespace

/// The state of a playback. Used on the queue only, except where noted.
class PulseOutputStream::Playback final : public std::enable_shared_from_this<Playback> {
public:
    Playback(Platform platform, std::unique_ptr<SndFileReader> sound)
        : m_connection(platform.connection)
        , m_queue(platform.queue)
        , m_sound(std::move(sound))
        , m_format(m_sound->format()) { }

    // Any thread.
    void setDidEnd(DidEnd observer);
    int begin();
    void cancel();
    bool isWanted() const;

    /// Whether the server plays the playback numbered `run`.
    bool start(int run);
    void pause();
    void rewind();
    void close();

    std::atomic<bool> loops = false;
    std::atomic<float> volume = 1.0F;

private:
    struct Callbacks;

    size_t frameSize() const { return sizeof(float) * size_t(m_format.channelCount); }
    bool open();
    void connect(pa_context *context);
    bool isReady() const;
    bool isBroken() const;
    void resume();
    void feed();
    size_t writableFrames();
    std::vector<float> read(size_t frameCount);
    void write(const std::vector<float> &samples);
    void drain();
    void drained();
    void seek(qint64 frame);
    void breakOff();
    void end(bool successfully);
    void enqueue(void (Playback::*operation)());
    void setCorked(bool isCorked);

    PulseConnection &m_connection;
    SerialQueue &m_queue;
    const std::unique_ptr<SndFileReader> m_sound;
    const AudioFormat m_format;
    /// Changed with the connection's lock held.
    pa_stream *m_stream = nullptr;
    /// The drain operation, once everything is written.
    pa_operation *m_drain = nullptr;
    /// The next frame to read.
    qint64 m_place = 0;
    bool m_isAtEnd = false;
    int m_run = 0;

    mutable std::mutex m_mutex;
    /// These three are guarded by the mutex; any thread.
    DidEnd m_didEnd;
    int m_latestRun = 0;
    bool m_isWanted = false;
};

/// Run on the audio thread, which must not block, so all work is queued.
struct PulseOutputStream::Playback::Callbacks {
    static Playback &playback(void *self) { return *static_cast<Playback *>(self); }

    static void state(pa_stream *native, void *self) {
        playback(self).m_connection.notify();
        if (!PA_STREAM_IS_GOOD(pa_stream_get_state(native)))
            playback(self).enqueue(&Playback::breakOff);
    }
    static void write(pa_stream *, size_t, void *self) { playback(self).enqueue(&Playback::feed); }
    static void drained(pa_stream *, int isDone, void *self) {
        if (isDone)
            playback(self).enqueue(&Playback::drained);
    }
};

void PulseOutputStream::Playback::setDidEnd(DidEnd observer) {
    const std::lock_guard lock(m_mutex);
    m_didEnd = std::move(observer);
}

int PulseOutputStream::Playback::begin() {
    const std::lock_guard lock(m_mutex);
    m_isWanted = true;
    return ++m_latestRun;
}

void PulseOutputStream::Playback::cancel() {
    {
        const std::lock_guard lock(m_mutex);
        m_isWanted = false;
    }
    // Makes a start that waits for the server give up.
    m_connection.notify();
}

bool PulseOutputStream::Playback::isWanted() const {
    const std::lock_guard lock(m_mutex);
    return m_isWanted;
}

bool PulseOutputStream::Playback::start(int run) {
    m_run = run;
    if (m_stream) {
        resume();
        return true;
    }
    if (m_sound->frameCount() == 0) {
        end(true);
        return true;
    }
    if (!open()) {
        end(false);
        return false;
    }
    feed();
    return true;
}

bool PulseOutputStream::Playback::open() {
    const auto deadline = steady_clock::now() + PulseConnection::patience;
    bool isOpen = false;
    try {
        PulseConnection::Lock lock(m_connection);
        connect(m_connection.readyContext(lock, deadline));
        m_connection.waitUntil(lock, deadline, [this] { return isReady() || isBroken() || !isWanted(); });
        isOpen = isReady();
    } catch (const SystemError &) {
        // There is no server; start() returns false.
    }
    if (!isOpen)
        close();
    return isOpen;
}

void PulseOutputStream::Playback::connect(pa_context *context) {
    pa_sample_spec samples {};
    samples.format = PA_SAMPLE_FLOAT32NE;
    samples.rate = uint32_t(m_format.sampleRate);
    samples.channels = uint8_t(m_format.channelCount);
    m_stream = pa_stream_new(context, "Playback", &samples, nullptr);
    if (!m_stream)
        return;
    pa_stream_set_state_callback(m_stream, Callbacks::state, this);
    pa_stream_set_write_callback(m_stream, Callbacks::write, this);
    constexpr auto serverDefault = uint32_t(-1);
    pa_buffer_attr buffering { serverDefault, serverDefault, serverDefault, serverDefault, serverDefault };
    buffering.tlength = uint32_t(frameSize() * size_t(m_format.sampleRate * bufferSeconds));
    // The volume is applied to the samples: the server remembers a stream's volume and would apply it to
    // later streams.
    pa_stream_connect_playback(m_stream, nullptr, &buffering, PA_STREAM_ADJUST_LATENCY, nullptr, nullptr);
}

void PulseOutputStream::Playback::close() {
    const PulseConnection::Lock lock(m_connection);
    if (m_drain) {
        pa_operation_cancel(m_drain);
        pa_operation_unref(m_drain);
        m_drain = nullptr;
    }
    if (!m_stream)
        return;
    pa_stream_set_state_callback(m_stream, nullptr, nullptr);
    pa_stream_set_write_callback(m_stream, nullptr, nullptr);
    pa_stream_disconnect(m_stream);
    pa_stream_unref(m_stream);
    m_stream = nullptr;
}

bool PulseOutputStream::Playback::isReady() const {
    return m_stream && pa_stream_get_state(m_stream) == PA_STREAM_READY;
}

bool PulseOutputStream::Playback::isBroken() const {
    return !m_stream || !PA_STREAM_IS_GOOD(pa_stream_get_state(m_stream));
}

void PulseOutputStream::Playback::pause() {
    if (m_stream)
        setCorked(true);
}

void PulseOutputStream::Playback::resume() {
    setCorked(false);
    feed();
}

void PulseOutputStream::Playback::setCorked(bool isCorked) {
    const PulseConnection::Lock lock(m_connection);
    if (pa_operation *operation = pa_stream_cork(m_stream, isCorked, nullptr, nullptr))
        pa_operation_unref(operation);
}

void PulseOutputStream::Playback::rewind() {
    close();
    seek(0);
}

void PulseOutputStream::Playback::seek(qint64 frame) {
    m_place = frame;
    m_sound->seek(frame);
    m_isAtEnd = false;
}

void PulseOutputStream::Playback::feed() {
    const size_t frameCount = writableFrames();
    if (frameCount == 0 || m_isAtEnd)
        return;
    write(read(frameCount));
    if (m_isAtEnd)
        drain();
}

void PulseOutputStream::Playback::drain() {
    const PulseConnection::Lock lock(m_connection);
    if (isReady())
        m_drain = pa_stream_drain(m_stream, Callbacks::drained, this);
}

size_t PulseOutputStream::Playback::writableFrames() {
    const PulseConnection::Lock lock(m_connection);
    const size_t byteCount = isReady() ? pa_stream_writable_size(m_stream) : 0;
    return byteCount == size_t(-1) ? 0 : byteCount / frameSize();
}

/// The next frames at the current volume; fewer at the end of a sound that does not loop.
std::vector<float> PulseOutputStream::Playback::read(size_t frameCount) {
    const auto channelCount = size_t(m_format.channelCount);
    const float factor = volume;
    std::vector<float> samples(frameCount * channelCount);
    size_t filled = 0;
    bool hasWrapped = false;
    while (filled < frameCount) {
        const qint64 count
            = m_sound->read(samples.data() + filled * channelCount, qint64(frameCount - filled));
        filled += size_t(count);
        m_place += count;
        if (filled == frameCount)
            break;
        m_isAtEnd = !loops || (hasWrapped && count == 0);
        if (m_isAtEnd)
            break;
        hasWrapped = true;
        seek(0);
    }
    samples.resize(filled * channelCount);
    for (float &sample : samples)
        sample *= factor;
    return samples;
}

void PulseOutputStream::Playback::write(const std::vector<float> &samples) {
    const PulseConnection::Lock lock(m_connection);
    if (isReady() && !samples.empty())
        pa_stream_write(
            m_stream, samples.data(), samples.size() * sizeof(float), nullptr, 0, PA_SEEK_RELATIVE);
}

/// Everything has been heard.
void PulseOutputStream::Playback::drained() {
    if (!m_drain)
        return;
    rewind();
    end(true);
}

/// The server or its output device is lost. A restarted sound continues with the first frame that was not
/// played.
void PulseOutputStream::Playback::breakOff() {
    bool isGone = false;
    {
        const PulseConnection::Lock lock(m_connection);
        isGone = m_stream && isBroken();
    }
    if (!isGone)
        return;
    close();
    seek(std::max<qint64>(0, m_place - qint64(m_format.sampleRate * bufferSeconds)));
    end(false);
}

void PulseOutputStream::Playback::end(bool successfully) {
    const std::lock_guard lock(m_mutex);
    if (!m_isWanted || m_run != m_latestRun)
        return;
    m_isWanted = false;
    if (m_didEnd)
        m_didEnd(successfully);
}

void PulseOutputStream::Playback::enqueue(void (Playback::*operation)()) {
    m_queue.async([weak = weak_from_this(), operation] {
        if (const auto self = weak.lock())
            ((*self).*operation)();
    });
}

PulseOutputStream::PulseOutputStream(Platform platform, std::unique_ptr<SndFileReader> sound)
    : m_queue(platform.queue)
    , m_playback(std::make_shared<Playback>(platform, std::move(sound))) { }

PulseOutputStream::~PulseOutputStream() {
    m_playback->setDidEnd(nullptr);
    m_playback->cancel();
    doOnQueue(&Playback::close);
}

void PulseOutputStream::setDidEnd(DidEnd observer) {
    m_playback->setDidEnd(std::move(observer));
}

void PulseOutputStream::setLoops(bool loops) {
    m_playback->loops = loops;
}

void PulseOutputStream::setVolume(float volume) {
    m_playback->volume = volume;
}

std::shared_future<bool> PulseOutputStream::play() {
    auto answer = std::make_shared<std::promise<bool>>();
    m_queue.async([playback = m_playback, run = m_playback->begin(), answer] {
        answer->set_value(playback->start(run));
    });
    return answer->get_future();
}

void PulseOutputStream::pause() {
    m_playback->cancel();
    doOnQueue(&Playback::pause);
}

void PulseOutputStream::stop() {
    m_playback->cancel();
    doOnQueue(&Playback::rewind);
}

bool PulseOutputStream::isPlaying() const {
    return m_playback->isWanted();
}

void PulseOutputStream::doOnQueue(void (Playback::*operation)()) {
    m_queue.async([playback = m_playback, operation] { ((*playback).*operation)(); });
}
