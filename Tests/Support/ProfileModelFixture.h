#pragma once

#include "Support/FakeAtomicFileWriter.h"
#include "Support/FakeFileListing.h"
#include "Support/FakeMicrophonePermission.h"
#include "Support/FakeOpenPanel.h"
#include "Support/FlowManagerFixture.h"
#include "Support/Pictures.h"
#include "TolmiApp/History/TranscriptionHistory.h"
#include "TolmiApp/Profile/ProfileAvatarEditor.h"
#include "TolmiApp/Profile/ProfileWorkspaceModel.h"

#include <optional>

/// The profile workspace's model over a platform in memory, with the interface in English. A new user without
/// any permission, until the test gives them.
struct ProfileModelFixture : FlowManagerFixture {
    ProfileModelFixture() {
        store.setUiLanguage(AppLanguage::English);
        fakes.hotkey->isTrusted = false;
        microphone.present = AuthorizationStatus::NotDetermined;
        put(picture, Pictures::file(Pictures::plain({ 4, 4 }, Qt::red), "PNG"));
    }

    /// The flow is set up, and the workspace is opened.
    void open() {
        setUp();
        model.emplace(flow,
            ProfileWorkspaceModel::Dependencies { history, microphone, editor, [this] { ++resumeCount; } });
    }

    void put(const FileURL &url, const QByteArray &content) {
        files.files[url.path()] = content;
        listing.items.push_back({ url, { .isRegularFile = true, .size = content.size() } });
    }
    void forget(const FileURL &url) {
        files.files.erase(url.path());
        std::erase_if(listing.items, [&url](const auto &item) { return item.first == url; });
    }

    /// The user has a picture, and its files are there.
    void useCustomAvatar() {
        putAvatarFiles();
        store.setCustomAvatar(
            QStringLiteral("profile/avatar-original.png"), QStringLiteral("profile/avatar-thumb.jpg"));
    }
    void putAvatarFiles() {
        put(original, "picture");
        put(thumbnail, "small picture");
    }

    /// A dictation is in the history.
    void addDictation() {
        FinishedDictation dictation;
        dictation.rawText = QStringLiteral("Hello.");
        history.add(dictation);
    }

    /// The user grants both permissions elsewhere and comes back.
    void grantEverything() {
        microphone.present = AuthorizationStatus::Authorized;
        fakes.hotkey->isTrusted = true;
        Q_EMIT fakes.application.didBecomeActive();
        clock.runPosted();
    }

    static FileURL inProfile(const char *name) {
        return FileURL(QStringLiteral("/home/user/.local/share/Tolmi/profile/") + QLatin1String(name));
    }

    const FileURL picture { QStringLiteral("/home/user/me.png") };
    const FileURL original = inProfile("avatar-original.png");
    const FileURL thumbnail = inProfile("avatar-thumb.jpg");
    FakeFileListing listing;
    FakeAtomicFileWriter writer;
    FakeMicrophonePermission microphone;
    FakeOpenPanel panel;
    TranscriptionHistory history { clock, files, writer };
    ProfileAvatarEditor editor { store, panel, ProfileAvatarStorage({ files, listing, writer }) };
    int resumeCount = 0;
    std::optional<ProfileWorkspaceModel> model;
};
