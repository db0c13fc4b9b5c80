#include "Support/FakeAtomicFileWriter.h"

void FakeAtomicFileWriter::write(const FileURL &url, const QByteArray &content, FilePrivacy privacy) {
    const std::lock_guard lock(m_mutex);
    whileWriting();
    if (!failures.empty()) {
        const SystemError failure = failures.front();
        failures.pop_front();
        throw failure;
    }
    writes.push_back({ url.path(), content, privacy });
}
