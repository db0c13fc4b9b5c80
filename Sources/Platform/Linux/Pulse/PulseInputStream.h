#pragma once

#include "Platform/Linux/Pulse/AudioBlocks.h"
#include "Platform/Linux/Pulse/PulseConnection.h"

#include <atomic>
#include <optional>

struct pa_operation;
struct pa_source_info;
struct pa_stream;

/// Captures the default microphone in buffers of equal length. While open, it follows changes of the server's
/// default.
///
/// The sink is called on the audio thread with the connection's lock held. When the input stops, the sink
/// gets half a second of silence, so that a meter drops to zero and a pre-roll contains nothing from before
/// the gap.
class PulseInputStream {
public:
    /// Closed. `connection` must outlive the stream.
    PulseInputStream(PulseConnection &connection, const AudioFormat &format);
    ~PulseInputStream();

    const AudioFormat &format() const { return m_format; }

    /// Delivers every further buffer of `frameCount` frames to `sink`, which may be empty; the previous sink
    /// is not called again once this has returned.
    void deliverTo(int frameCount, AudioBlocks::Sink sink);

    /// Opens (or reopens) the default microphone and waits up to `patience` for the first samples. Throws
    /// SystemError with a message that says what to do.
    void open(std::chrono::milliseconds patience = PulseConnection::patience);

    /// Does nothing when closed.
    void close();

    /// Whether samples arrive. Any thread.
    bool isDelivering() const;

private:
    struct Callbacks;

    void openUntil(PulseConnection::Deadline deadline);
    void connect(pa_context *context);
    void disconnect();
    SystemError timeOut();
    void stateChanged();
    void read();
    void verifySource();
    void sourceFound(const pa_source_info &source);
    void fail(const SystemError &error);
    void breakOff();

    PulseConnection &m_connection;
    const AudioFormat m_format;
    AudioBlocks m_blocks;
    pa_stream *m_stream = nullptr;
    /// The pending query for the stream's source.
    pa_operation *m_sourceQuery = nullptr;
    /// False if the server, for lack of a microphone, has connected the stream to a monitor source.
    bool m_isMicrophone = false;
    /// Why the latest open() failed.
    std::optional<SystemError> m_failure;
    std::atomic<bool> m_isDelivering = false;
    /// Time of the steady clock.
    std::atomic<std::chrono::steady_clock::duration> m_lastDelivery {};
};
