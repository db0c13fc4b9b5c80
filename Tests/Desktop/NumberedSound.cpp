#include "Desktop/NumberedSound.h"

#include <QFile>

#include <sndfile.h>

#include <algorithm>

std::vector<int> NumberedSound::read(const FileURL &url) {
    SF_INFO info {};
    SNDFILE *file = sf_open(QFile::encodeName(url.path()).constData(), SFM_READ, &info);
    if (!file)
        return {};
    std::vector<float> samples(size_t(info.frames * info.channels));
    sf_readf_float(file, samples.data(), info.frames);
    sf_close(file);
    std::vector<int> numbers(samples.size());
    std::transform(samples.begin(), samples.end(), numbers.begin(), number);
    return numbers;
}

void NumberedEngine::installTap(int bufferSize, Tap tap) {
    m_engine.installTap(bufferSize, [this, tap = std::move(tap)](const AudioBuffer &buffer) {
        {
            const std::lock_guard lock(m_mutex);
            for (const float sample : buffer.channels.front())
                m_tape.push_back(NumberedSound::number(sample));
            m_newest = std::max(m_newest.load(), m_tape.back());
            m_frameCount = int(m_tape.size());
        }
        tap(buffer);
    });
}

std::vector<int> NumberedEngine::tape() const {
    const std::lock_guard lock(m_mutex);
    return m_tape;
}
