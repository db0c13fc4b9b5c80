#include "Platform/Desktop/QtSavePanel.h"
#include "Support/FakeSavePanel.h"
#include "Support/FilePanelContract.h"

namespace {
/// A request, and files to choose.
class SavePanelUser {
public:
    static constexpr const char *firstName = "history.txt";
    static constexpr const char *secondName = "second.txt";

    static SavePanelRequest request() {
        return { QStringLiteral("Export"), QStringLiteral("proposed-2026.txt") };
    }
    /// A file that does not exist yet.
    static FileURL file(const QTemporaryDir &folder, const QString &name) {
        return FileURL(folder.filePath(name));
    }
};

class UserOfFake final : public SavePanelUser {
public:
    SavePanel &panel() { return m_panel; }
    void expectShown() const { EXPECT_EQ(m_panel.requests.back(), request()); }
    void choose(const FileURL &url) { EXPECT_TRUE(m_panel.answer(url)); }
    void cancel() { EXPECT_TRUE(m_panel.answer(std::nullopt)); }

private:
    FakeSavePanel m_panel;
};

class UserOfDialog final : public SavePanelUser, public UserOfFileDialog {
public:
    SavePanel &panel() { return m_panel; }
    void expectShown() const {
        EXPECT_EQ(dialog().windowTitle(), request().title);
        EXPECT_EQ(FileURL(dialog().selectedFiles().value(0)).lastPathComponent(), request().proposedName);
    }

private:
    QtSavePanel m_panel;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeSavePanel, FilePanelContract, UserOfFake);
INSTANTIATE_TYPED_TEST_SUITE_P(QtSavePanel, FilePanelContract, UserOfDialog);
} // namespace

TEST(QtSavePanel, AddsTheSuffixToABareName) {
    QTemporaryDir folder;
    UserOfDialog user;
    std::optional<FileURL> answer;
    user.panel().run(
        { QStringLiteral("Export"), QStringLiteral("a.txt") }, [&answer](const auto &url) { answer = url; });
    user.choose(FileURL(folder.filePath(QStringLiteral("bare"))));
    EXPECT_EQ(answer, FileURL(folder.filePath(QStringLiteral("bare.txt"))));
}

TEST(QtSavePanel, IsModalToTheProgramsWindows) {
    UserOfDialog user;
    user.panel().run(UserOfDialog::request(), [](const auto &) {});
    EXPECT_EQ(QGuiApplication::modalWindow(), user.dialog().windowHandle());
    EXPECT_EQ(user.dialog().windowModality(), Qt::ApplicationModal);
    user.cancel();
}
