#include "TolmiApp/Settings/ProfileChangeTracker.h"

#include <gtest/gtest.h>

namespace {
class ProfileChangeTrackerTest : public testing::Test {
protected:
    void rename(const char *name) {
        profile.displayName = QString::fromLatin1(name);
        tracker.noticeAssignment();
    }

    TrackedProfile profile;
    int changes = 0;
    ProfileChangeTracker tracker { [this] { return profile; }, [this] { ++changes; } };
};
} // namespace

TEST_F(ProfileChangeTrackerTest, CountsNothingBeforeItStarts) {
    rename("Ana");
    tracker.start();
    rename("Ana");
    EXPECT_EQ(changes, 0);
    rename("Maria");
    EXPECT_EQ(changes, 1);
}

TEST_F(ProfileChangeTrackerTest, ANestedBatchIsPartOfTheOuterOne) {
    tracker.start();
    tracker.performBatchUpdate([this] {
        rename("Ana");
        tracker.performBatchUpdate([this] { rename("Maria"); });
        EXPECT_EQ(changes, 0);
    });
    EXPECT_EQ(changes, 1);
}

TEST_F(ProfileChangeTrackerTest, ABatchWithoutANetChangeIsNoChange) {
    tracker.start();
    tracker.performBatchUpdate([this] {
        rename("Ana");
        rename("");
    });
    EXPECT_EQ(changes, 0);
}

TEST_F(ProfileChangeTrackerTest, ARepairIsNeverCounted) {
    tracker.start();
    tracker.performRepair([this] { rename("Ana"); });
    rename("Ana");
    EXPECT_EQ(changes, 0);
    rename("Maria");
    EXPECT_EQ(changes, 1);
}
