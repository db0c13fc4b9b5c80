#include "Support/FakeFileViewer.h"
#include "Support/FileViewerContract.h"

namespace {
class MadeFake {
public:
    FileViewer &viewer() { return m_viewer; }
    QString shown() const { return m_viewer.calls.value(0); }

private:
    FakeFileViewer m_viewer;
};
} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, FileViewerContract, MadeFake);
