#include "Platform/Linux/Files/LinuxAtomicFileWriter.h"
#include "Support/FakeAtomicFileWriter.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>

namespace {
class RealFiles {
public:
    AtomicFileWriter &writer() { return m_writer; }
    FileURL file() const { return FileURL(m_folder.filePath(QStringLiteral("file"))); }
    QByteArray content() const {
        QFile file(this->file().path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// A path where no file can be written.
    FileURL impossibleFile() { return FileURL(m_folder.filePath(QStringLiteral("missing/file"))); }

private:
    QTemporaryDir m_folder;
    LinuxAtomicFileWriter m_writer;
};

class FilesInMemory {
public:
    AtomicFileWriter &writer() { return m_writer; }
    FileURL file() const { return FileURL(QStringLiteral("/folder/file")); }
    QByteArray content() const { return m_writer.writes.back().content; }
    FileURL impossibleFile() {
        m_writer.failures.push_back(SystemError::fromErrno(ENOENT, QStringLiteral("/missing/file")));
        return FileURL(QStringLiteral("/missing/file"));
    }

private:
    FakeAtomicFileWriter m_writer;
};

template <typename Kind>
class AtomicFileWriterContract : public testing::Test {
protected:
    Kind files;
};

using Kinds = testing::Types<FilesInMemory, RealFiles>;
TYPED_TEST_SUITE(AtomicFileWriterContract, Kinds);
} // namespace

TYPED_TEST(AtomicFileWriterContract, LeavesTheNewestContent) {
    AtomicFileWriter &writer = this->files.writer();
    writer.write(this->files.file(), "first", FilePrivacy::Private);
    EXPECT_EQ(this->files.content(), "first");
    writer.write(this->files.file(), "", FilePrivacy::AsUsual);
    EXPECT_EQ(this->files.content(), "");
}

TYPED_TEST(AtomicFileWriterContract, WritesWithoutPatienceToo) {
    AtomicFileWriter &writer = this->files.writer();
    writer.limitWaiting(std::chrono::milliseconds(0));
    writer.write(this->files.file(), "last", FilePrivacy::Private);
    EXPECT_EQ(this->files.content(), "last");
}

TYPED_TEST(AtomicFileWriterContract, ThrowsAndChangesNothing) {
    AtomicFileWriter &writer = this->files.writer();
    writer.write(this->files.file(), "first", FilePrivacy::Private);
    EXPECT_THROW(writer.write(this->files.impossibleFile(), "new", FilePrivacy::Private), SystemError);
    EXPECT_EQ(this->files.content(), "first");
    writer.sweepLeftovers(this->files.file().deletingLastPathComponent());
    EXPECT_EQ(this->files.content(), "first");
}
