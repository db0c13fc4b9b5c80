#pragma once

#include "Foundation/FileURL.h"
#include "Support/Print.h"

#include <QApplication>
#include <QFileDialog>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <vector>

/// The user of a dialog of the toolkit: looks at the one that is open and answers it.
class UserOfFileDialog {
public:
    // The toolkit's dialog, which a test can reach into.
    UserOfFileDialog() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    void choose(const FileURL &url) {
        dialog().selectFile(url.path());
        // As the button for opening or saving does.
        QMetaObject::invokeMethod(&dialog(), "accept");
    }
    void cancel() { dialog().reject(); }

    static QFileDialog &dialog() {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            auto *dialog = qobject_cast<QFileDialog *>(widget);
            if (dialog && dialog->isVisible())
                return *dialog;
        }
        throw std::logic_error("no dialog is open");
    }
};

/// What every panel does that asks the user for a file. `User` has one as `panel()`, asks for `request()`,
/// compares that with what is shown in `expectShown()`, answers by `choose()` and `cancel()`, and makes the
/// places of files that can be chosen in `file()`.
template <typename User>
class FilePanelContract : public testing::Test {
protected:
    void ask() {
        m_user.panel().run(User::request(), [this](const auto &url) { m_answers.push_back(url); });
    }
    FileURL file(const char *name) const { return User::file(m_folder, QString::fromLatin1(name)); }

    using Answers = std::vector<std::optional<FileURL>>;

    User m_user;
    Answers m_answers;

private:
    QTemporaryDir m_folder;
};

TYPED_TEST_SUITE_P(FilePanelContract);

TYPED_TEST_P(FilePanelContract, ShowsWhatItAsksFor) {
    this->ask();
    this->m_user.expectShown();
    EXPECT_EQ(this->m_answers.size(), 0);
    this->m_user.cancel();
}

TYPED_TEST_P(FilePanelContract, GivesTheChosenFileOnce) {
    const FileURL chosen = this->file(TypeParam::firstName);
    this->ask();
    this->m_user.choose(chosen);
    EXPECT_EQ(this->m_answers, typename TestFixture::Answers { chosen });
}

TYPED_TEST_P(FilePanelContract, GivesNothingWhenItIsCancelled) {
    this->ask();
    this->m_user.cancel();
    EXPECT_EQ(this->m_answers, typename TestFixture::Answers { std::nullopt });
}

TYPED_TEST_P(FilePanelContract, AsksAgain) {
    const FileURL chosen = this->file(TypeParam::secondName);
    this->ask();
    this->m_user.cancel();
    this->ask();
    this->m_user.choose(chosen);
    EXPECT_EQ(this->m_answers, (typename TestFixture::Answers { std::nullopt, chosen }));
}

REGISTER_TYPED_TEST_SUITE_P(
    FilePanelContract, ShowsWhatItAsksFor, GivesTheChosenFileOnce, GivesNothingWhenItIsCancelled, AsksAgain);
