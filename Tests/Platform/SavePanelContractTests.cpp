#include "Platform/Desktop/QtSavePanel.h"
#include "Support/FakeSavePanel.h"
#include "Support/Print.h"
#include "Support/UntilTrue.h"

#include <QApplication>
#include <QFileDialog>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {
/// One kind of panel, and how a test answers for the user.
class AskedUser {
public:
    virtual ~AskedUser() = default;
    virtual SavePanel &panel() = 0;
    virtual SavePanelRequest shown() = 0;
    virtual void choose(const FileURL &url) = 0;
    virtual void cancel() = 0;
};

class UserOfFake final : public AskedUser {
public:
    SavePanel &panel() override { return m_panel; }
    SavePanelRequest shown() override { return m_panel.requests.back(); }
    void choose(const FileURL &url) override { EXPECT_TRUE(m_panel.answer(url)); }
    void cancel() override { EXPECT_TRUE(m_panel.answer(std::nullopt)); }

private:
    FakeSavePanel m_panel;
};

class UserOfDialog final : public AskedUser {
public:
    // The toolkit's dialog, which a test can reach into.
    UserOfDialog() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    SavePanel &panel() override { return m_panel; }
    SavePanelRequest shown() override {
        return { dialog().windowTitle(), FileURL(dialog().selectedFiles().value(0)).lastPathComponent() };
    }
    void choose(const FileURL &url) override {
        dialog().selectFile(url.path());
        // As the button for saving does.
        QMetaObject::invokeMethod(&dialog(), "accept");
    }
    void cancel() override { dialog().reject(); }

private:
    static QFileDialog &dialog() {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            auto *dialog = qobject_cast<QFileDialog *>(widget);
            if (dialog && dialog->isVisible())
                return *dialog;
        }
        throw std::logic_error("no dialog is open");
    }

    QtSavePanel m_panel;
};

using MakeUser = std::unique_ptr<AskedUser> (*)();

template <typename Kind>
std::unique_ptr<AskedUser> make() {
    return std::make_unique<Kind>();
}

class SavePanelContract : public testing::TestWithParam<MakeUser> {
protected:
    void ask() {
        m_user->panel().run(m_request, [this](const std::optional<FileURL> &url) {
            ++m_answerCount;
            m_answer = url;
        });
    }
    FileURL at(const char *name) const { return FileURL(m_folder.filePath(QString::fromLatin1(name))); }

    const SavePanelRequest m_request { QStringLiteral("Export"), QStringLiteral("proposed-2026.txt") };
    const std::unique_ptr<AskedUser> m_user = GetParam()();
    int m_answerCount = 0;
    std::optional<FileURL> m_answer;

private:
    QTemporaryDir m_folder;
};

INSTANTIATE_TEST_SUITE_P(Kinds, SavePanelContract, testing::Values(&make<UserOfFake>, &make<UserOfDialog>),
    [](const auto &info) { return info.index == 0 ? "Fake" : "Qt"; });
} // namespace

TEST_P(SavePanelContract, ShowsItsTitleAndTheProposedName) {
    ask();
    EXPECT_EQ(m_user->shown(), m_request);
    EXPECT_EQ(m_answerCount, 0);
    m_user->cancel();
}

TEST_P(SavePanelContract, GivesTheChosenFileOnce) {
    ask();
    m_user->choose(at("history.txt"));
    EXPECT_EQ(m_answerCount, 1);
    EXPECT_EQ(m_answer, at("history.txt"));
}

TEST_P(SavePanelContract, GivesNothingWhenItIsCancelled) {
    ask();
    m_user->cancel();
    EXPECT_EQ(m_answerCount, 1);
    EXPECT_EQ(m_answer, std::nullopt);
}

TEST_P(SavePanelContract, AsksAgain) {
    ask();
    m_user->cancel();
    ask();
    m_user->choose(at("second.txt"));
    EXPECT_EQ(m_answerCount, 2);
    EXPECT_EQ(m_answer, at("second.txt"));
}

TEST(QtSavePanel, AddsTheSuffixToABareName) {
    QTemporaryDir folder;
    UserOfDialog user;
    std::optional<FileURL> answer;
    user.panel().run(
        { QStringLiteral("Export"), QStringLiteral("a.txt") }, [&answer](const auto &url) { answer = url; });
    user.choose(FileURL(folder.filePath(QStringLiteral("bare"))));
    EXPECT_EQ(answer, FileURL(folder.filePath(QStringLiteral("bare.txt"))));
}
