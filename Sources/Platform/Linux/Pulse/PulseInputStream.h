#pragma once

#include "Platform/Linux/Pulse/AudioBlocks.h"
#include "Platform/Linux/Pulse/PulseConnection.h"

#include <atomic>
#include <optional>

struct pa_operation;
struct pa_source_info;
struct pa_stream;

/// Sound from the default microphone in buffers of one length. It follows the server's choice of the default
/// microphone while it is open.
///
/// What a sink gets runs on the audio thread, under the connection's lock. When the sound breaks off, the
/// sink gets half a second of silence: a meter falls to zero, and a pre-roll holds nothing from before the
/// gap.
class PulseInputStream {
public:
    /// Closed. `connection` must outlive the stream.
    PulseInputStream(PulseConnection &connection, const AudioFormat &format);
    ~PulseInputStream();

    const AudioFormat &format() const { return m_format; }

    /// Every further buffer of `frameCount` frames goes to `sink`, which may be empty; after the call has
    /// returned the former one is not called again.
    void deliverTo(int frameCount, AudioBlocks::Sink sink);

    /// Opens the default microphone, anew if it is open, and waits for the first sound, at most as long as
    /// `patience`. Throws SystemError with a text that says what to do.
    void open(std::chrono::milliseconds patience = PulseConnection::patience);

    /// Harmless when closed.
    void close();

    /// Whether sound arrives. Any thread.
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
    /// The question what the stream listens to, while it is open.
    pa_operation *m_sourceQuery = nullptr;
    /// The stream may have been put on the monitor of a loudspeaker, where the server has no microphone to
    /// give.
    bool m_isMicrophone = false;
    /// Why the latest opening failed.
    std::optional<SystemError> m_failure;
    std::atomic<bool> m_isDelivering = false;
    /// On the steady clock.
    std::atomic<std::chrono::steady_clock::duration> m_lastDelivery {};
};
