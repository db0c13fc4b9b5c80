#include "Platform/Desktop/QtOpenPanel.h"
#include "Support/FakeOpenPanel.h"
#include "Support/FilePanelContract.h"

#include <QFile>

namespace {
/// A request, and files to choose.
class OpenPanelUser {
public:
    static constexpr const char *firstName = "me.png";
    static constexpr const char *secondName = "second.JPG";

    static OpenPanelRequest request() {
        return { QStringLiteral("Upload avatar"), { QStringLiteral("png"), QStringLiteral("jpg") } };
    }
    /// An existing file.
    static FileURL file(const QTemporaryDir &folder, const QString &name) {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return FileURL(file.fileName());
    }
};

class UserOfFake final : public OpenPanelUser {
public:
    OpenPanel &panel() { return m_panel; }
    void expectShown() const { EXPECT_EQ(m_panel.requests.back(), request()); }
    void choose(const FileURL &url) { m_panel.choose(url); }
    void cancel() { m_panel.choose(std::nullopt); }

private:
    FakeOpenPanel m_panel;
};

class UserOfDialog final : public OpenPanelUser, public UserOfFileDialog {
public:
    OpenPanel &panel() { return m_panel; }
    void expectShown() const { EXPECT_EQ(dialog().windowTitle(), request().title); }

private:
    QtOpenPanel m_panel;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeOpenPanel, FilePanelContract, UserOfFake);
INSTANTIATE_TYPED_TEST_SUITE_P(QtOpenPanel, FilePanelContract, UserOfDialog);
} // namespace

TEST(QtOpenPanel, ShowsOneFileOfTheGivenKinds) {
    UserOfDialog user;
    user.panel().run(UserOfDialog::request(), [](const auto &) {});
    EXPECT_EQ(UserOfDialog::dialog().fileMode(), QFileDialog::ExistingFile);
    EXPECT_TRUE(UserOfDialog::dialog().testOption(QFileDialog::HideNameFilterDetails));
    EXPECT_EQ(UserOfDialog::dialog().nameFilters().value(0).section(u' ', 0, 1), u"Upload avatar");
    user.cancel();
}

TEST(QtOpenPanel, IsModalToTheProgramsWindows) {
    UserOfDialog user;
    user.panel().run(UserOfDialog::request(), [](const auto &) {});
    EXPECT_EQ(QGuiApplication::modalWindow(), user.dialog().windowHandle());
    EXPECT_EQ(user.dialog().windowModality(), Qt::ApplicationModal);
    user.cancel();
}
