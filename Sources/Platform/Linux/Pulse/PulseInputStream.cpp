#include "Platform/Linux/Pulse/PulseInputStream.h"

#include <pulse/context.h>
#include <pulse/introspect.h>
#include <pulse/operation.h>
#include <pulse/stream.h>

namespace {
using std::chrono::steady_clock;

constexpr double gapSeconds = 0.5;

/// Requested as latency, of which the server delivers half at a time: 8192 bytes of mono floats at 48 kHz.
constexpr double fragmentSeconds = 2048.0 / 48000.0;

size_t frameSize(const AudioFormat &format) {
    return sizeof(float) * size_t(format.channelCount);
}

SystemError noMicrophone(PulseConnection &connection) {
    return connection.failure(PA_ERR_NOENTITY);
}
} // namespace

struct PulseInputStream::Callbacks {
    static PulseInputStream &stream(void *self) { return *static_cast<PulseInputStream *>(self); }

    static void state(pa_stream *, void *self) { stream(self).stateChanged(); }
    static void read(pa_stream *, size_t, void *self) { stream(self).read(); }
    static void moved(pa_stream *, void *self) { stream(self).verifySource(); }

    static void suspended(pa_stream *native, void *self) {
        if (pa_stream_is_suspended(native) > 0)
            stream(self).breakOff();
    }

    static void source(pa_context *, const pa_source_info *source, int isEnd, void *self) {
        if (source)
            stream(self).sourceFound(*source);
        else if (isEnd < 0)
            stream(self).fail(noMicrophone(stream(self).m_connection));
    }
};

PulseInputStream::PulseInputStream(PulseConnection &connection, const AudioFormat &format)
    : m_connection(connection)
    , m_format(format)
    , m_blocks(format) { }

PulseInputStream::~PulseInputStream() {
    close();
}

void PulseInputStream::deliverTo(int frameCount, AudioBlocks::Sink sink) {
    const PulseConnection::Lock lock(m_connection);
    m_blocks.deliverTo(frameCount, std::move(sink));
}

void PulseInputStream::open(std::chrono::milliseconds patience) {
    try {
        openUntil(steady_clock::now() + patience);
        m_connection.setOpeningFailure(std::nullopt);
    } catch (const SystemError &error) {
        m_connection.setOpeningFailure(error);
        throw;
    }
}

void PulseInputStream::openUntil(PulseConnection::Deadline deadline) {
    PulseConnection::Lock lock(m_connection);
    breakOff();
    disconnect();
    connect(m_connection.readyContext(lock, deadline));
    const bool isAnswered = m_connection.waitUntil(
        lock, deadline, [this] { return m_isDelivering.load() || m_failure.has_value(); });
    if (m_isDelivering)
        return;
    const SystemError error = isAnswered ? *m_failure : timeOut();
    disconnect();
    throw error;
}

void PulseInputStream::close() {
    const PulseConnection::Lock lock(m_connection);
    disconnect();
}

bool PulseInputStream::isDelivering() const {
    return m_isDelivering
        && steady_clock::now().time_since_epoch() - m_lastDelivery.load() < PulseConnection::patience;
}

void PulseInputStream::connect(pa_context *context) {
    pa_sample_spec samples {};
    samples.format = PA_SAMPLE_FLOAT32NE;
    samples.rate = uint32_t(m_format.sampleRate);
    samples.channels = uint8_t(m_format.channelCount);
    // No media role: a communication role would switch Bluetooth headsets to the headset profile.
    m_stream = pa_stream_new(context, "Dictation", &samples, nullptr);
    if (!m_stream)
        throw m_connection.failure(pa_context_errno(context));
    pa_stream_set_state_callback(m_stream, Callbacks::state, this);
    pa_stream_set_read_callback(m_stream, Callbacks::read, this);
    pa_stream_set_moved_callback(m_stream, Callbacks::moved, this);
    pa_stream_set_suspended_callback(m_stream, Callbacks::suspended, this);

    constexpr auto serverDefault = uint32_t(-1);
    pa_buffer_attr buffering { serverDefault, serverDefault, serverDefault, serverDefault, 0 };
    buffering.fragsize = uint32_t(frameSize(m_format) * size_t(m_format.sampleRate * fragmentSeconds));
    if (pa_stream_connect_record(m_stream, nullptr, &buffering, PA_STREAM_ADJUST_LATENCY) < 0) {
        disconnect();
        throw m_connection.failure(pa_context_errno(context));
    }
}

void PulseInputStream::disconnect() {
    m_isDelivering = false;
    m_isMicrophone = false;
    m_failure.reset();
    m_blocks.clear();
    if (m_sourceQuery) {
        pa_operation_cancel(m_sourceQuery);
        pa_operation_unref(m_sourceQuery);
        m_sourceQuery = nullptr;
    }
    if (!m_stream)
        return;
    pa_stream_set_state_callback(m_stream, nullptr, nullptr);
    pa_stream_set_read_callback(m_stream, nullptr, nullptr);
    pa_stream_set_moved_callback(m_stream, nullptr, nullptr);
    pa_stream_set_suspended_callback(m_stream, nullptr, nullptr);
    pa_stream_disconnect(m_stream);
    pa_stream_unref(m_stream);
    m_stream = nullptr;
}

SystemError PulseInputStream::timeOut() {
    // The server may hang; the next attempt uses a new connection.
    if (pa_stream_get_state(m_stream) != PA_STREAM_READY)
        m_connection.dropContext();
    return SystemError(QStringLiteral(
        "The microphone delivers no sound. Choose another input in the sound settings, then try again."));
}

void PulseInputStream::stateChanged() {
    const pa_stream_state_t state = pa_stream_get_state(m_stream);
    if (state == PA_STREAM_READY)
        verifySource();
    else if (!PA_STREAM_IS_GOOD(state))
        fail(m_connection.failure(pa_context_errno(pa_stream_get_context(m_stream))));
}

void PulseInputStream::read() {
    const void *data = nullptr;
    size_t byteCount = 0;
    while (pa_stream_peek(m_stream, &data, &byteCount) == 0 && byteCount > 0) {
        if (m_isMicrophone) {
            m_lastDelivery = steady_clock::now().time_since_epoch();
            m_blocks.append(static_cast<const float *>(data), qint64(byteCount / frameSize(m_format)));
            if (!m_isDelivering.exchange(true))
                m_connection.notify();
        }
        pa_stream_drop(m_stream);
    }
}

void PulseInputStream::verifySource() {
    m_isMicrophone = false;
    if (m_sourceQuery) {
        pa_operation_cancel(m_sourceQuery);
        pa_operation_unref(m_sourceQuery);
    }
    m_sourceQuery = pa_context_get_source_info_by_index(
        pa_stream_get_context(m_stream), pa_stream_get_device_index(m_stream), Callbacks::source, this);
}

void PulseInputStream::sourceFound(const pa_source_info &source) {
    m_isMicrophone = source.monitor_of_sink == PA_INVALID_INDEX;
    if (!m_isMicrophone)
        fail(noMicrophone(m_connection));
}

void PulseInputStream::fail(const SystemError &error) {
    m_failure = error;
    breakOff();
    m_connection.notify();
}

void PulseInputStream::breakOff() {
    if (!m_isDelivering)
        return;
    // In this order, so that the silence is delivered before isDelivering() becomes false.
    m_blocks.append(nullptr, qint64(m_format.sampleRate * gapSeconds));
    m_isDelivering = false;
}
