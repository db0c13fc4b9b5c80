#include "Platform/Desktop/QtOpenPanel.h"
#include "Support/FakeOpenPanel.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {
/// One kind of panel, and how a test answers for the user.
class AskedUser {
public:
    virtual ~AskedUser() = default;
    virtual OpenPanel &panel() = 0;
    virtual QString shownTitle() = 0;
    virtual void choose(const FileURL &url) = 0;
    virtual void cancel() = 0;
};

class UserOfFake final : public AskedUser {
public:
    OpenPanel &panel() override { return m_panel; }
    QString shownTitle() override { return m_panel.requests.back().title; }
    void choose(const FileURL &url) override { m_panel.choose(url); }
    void cancel() override { m_panel.choose(std::nullopt); }

private:
    FakeOpenPanel m_panel;
};

class UserOfDialog final : public AskedUser {
public:
    // The toolkit's dialog, which a test can reach into.
    UserOfDialog() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    OpenPanel &panel() override { return m_panel; }
    QString shownTitle() override { return dialog().windowTitle(); }
    void choose(const FileURL &url) override {
        dialog().selectFile(url.path());
        // As the button for opening does.
        QMetaObject::invokeMethod(&dialog(), "accept");
    }
    void cancel() override { dialog().reject(); }

    static QFileDialog &dialog() {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            auto *dialog = qobject_cast<QFileDialog *>(widget);
            if (dialog && dialog->isVisible())
                return *dialog;
        }
        throw std::logic_error("no dialog is open");
    }

private:
    QtOpenPanel m_panel;
};

using MakeUser = std::unique_ptr<AskedUser> (*)();

template <typename Kind>
std::unique_ptr<AskedUser> make() {
    return std::make_unique<Kind>();
}

const OpenPanelRequest someRequest { QStringLiteral("Upload avatar"),
    { QStringLiteral("png"), QStringLiteral("jpg") } };

class OpenPanelContract : public testing::TestWithParam<MakeUser> {
protected:
    void ask() {
        m_user->panel().run(someRequest, [this](const std::optional<FileURL> &url) {
            ++m_answerCount;
            m_answer = url;
        });
    }
    FileURL existing(const char *name) const {
        QFile file(m_folder.filePath(QString::fromLatin1(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return FileURL(file.fileName());
    }

    const std::unique_ptr<AskedUser> m_user = GetParam()();
    int m_answerCount = 0;
    std::optional<FileURL> m_answer;

private:
    QTemporaryDir m_folder;
};

INSTANTIATE_TEST_SUITE_P(Kinds, OpenPanelContract, testing::Values(&make<UserOfFake>, &make<UserOfDialog>),
    [](const auto &info) { return info.index == 0 ? "Fake" : "Qt"; });
} // namespace

TEST_P(OpenPanelContract, ShowsItsTitle) {
    ask();
    EXPECT_EQ(m_user->shownTitle(), someRequest.title);
    EXPECT_EQ(m_answerCount, 0);
    m_user->cancel();
}

TEST_P(OpenPanelContract, GivesTheChosenFileOnce) {
    const FileURL picture = existing("me.png");
    ask();
    m_user->choose(picture);
    EXPECT_EQ(m_answerCount, 1);
    EXPECT_EQ(m_answer, picture);
}

TEST_P(OpenPanelContract, GivesNothingWhenItIsCancelled) {
    ask();
    m_user->cancel();
    EXPECT_EQ(m_answerCount, 1);
    EXPECT_EQ(m_answer, std::nullopt);
}

TEST_P(OpenPanelContract, AsksAgain) {
    const FileURL picture = existing("second.JPG");
    ask();
    m_user->cancel();
    ask();
    m_user->choose(picture);
    EXPECT_EQ(m_answerCount, 2);
    EXPECT_EQ(m_answer, picture);
}

TEST(QtOpenPanel, ShowsOneFileOfTheGivenKinds) {
    UserOfDialog user;
    user.panel().run(someRequest, [](const auto &) {});
    EXPECT_EQ(UserOfDialog::dialog().fileMode(), QFileDialog::ExistingFile);
    EXPECT_TRUE(UserOfDialog::dialog().testOption(QFileDialog::HideNameFilterDetails));
    EXPECT_EQ(UserOfDialog::dialog().nameFilters().value(0).section(u' ', 0, 1), u"Upload avatar");
    user.cancel();
}
