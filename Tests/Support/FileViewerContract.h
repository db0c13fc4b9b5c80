#pragma once

#include "Platform/FileViewer.h"
#include "Support/Print.h"

#include <gtest/gtest.h>

/// What every viewer of files does. `Made` builds one in its constructor and gives it as `viewer()`;
/// `shown()` waits for what the user is shown and tells it as "selectFile PATH" or "openFolder PATH".
template <typename Made>
class FileViewerContract : public testing::Test {
protected:
    Made made;
};

TYPED_TEST_SUITE_P(FileViewerContract);

TYPED_TEST_P(FileViewerContract, SelectsAFile) {
    this->made.viewer().selectFile(FileURL(QStringLiteral("/tmp/ș a#1.wav")));
    EXPECT_EQ(this->made.shown(), QStringLiteral("selectFile /tmp/ș a#1.wav"));
}

TYPED_TEST_P(FileViewerContract, OpensAFolder) {
    this->made.viewer().openFolder(FileURL(QStringLiteral("/tmp/some folder")));
    EXPECT_EQ(this->made.shown(), QStringLiteral("openFolder /tmp/some folder"));
}

REGISTER_TYPED_TEST_SUITE_P(FileViewerContract, SelectsAFile, OpensAFolder);
