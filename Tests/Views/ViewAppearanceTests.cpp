#include "TolmiApp/Shell/ViewAppearance.h"

#include "Support/FakeDesktopLook.h"
#include "Support/SettingsStoreFixture.h"
#include "Views/ViewsFixture.h"

#include <QQmlComponent>

namespace {

class ViewAppearanceTest : public ViewsFixture {
protected:
    ViewAppearanceTest() {
        QQmlComponent component(&engine);
        component.setData("import QtQml\nimport Tolmi\nQtObject { property bool isDark: TolmiPalette.isDark; "
                          "property bool isReduced: Motion.isReduced }",
            QUrl());
        seen.reset(component.create());
    }

    bool isDark() const { return seen->property("isDark").toBool(); }
    bool isReduced() const { return seen->property("isReduced").toBool(); }

    SettingsStoreFixture settings;
    FakeDesktopLook look;
    std::unique_ptr<QObject> seen;
};

} // namespace

TEST_F(ViewAppearanceTest, FollowsTheChoiceAtOnce) {
    settings.store.setAppearance(AppAppearance::Light);
    const ViewAppearance *appearance = new ViewAppearance(engine, settings.store, look);
    EXPECT_FALSE(isDark());
    settings.store.setAppearance(AppAppearance::Dark);
    EXPECT_TRUE(isDark());
    EXPECT_TRUE(appearance->isDark());
    look.setAppearance(Appearance::Light);
    EXPECT_TRUE(isDark()) << "the user's choice counts, not the desktop's";
}

TEST_F(ViewAppearanceTest, FollowsTheDesktopIfChosen) {
    settings.store.setAppearance(AppAppearance::System);
    new ViewAppearance(engine, settings.store, look);
    EXPECT_FALSE(isDark()) << "a desktop without a preference is light";
    look.setAppearance(Appearance::Dark);
    EXPECT_TRUE(isDark());
    look.setAppearance(Appearance::Light);
    EXPECT_FALSE(isDark());
    settings.store.setAppearance(AppAppearance::Dark);
    EXPECT_TRUE(isDark());
}

TEST_F(ViewAppearanceTest, FollowsReducedMotion) {
    look.setMotionReduced(true);
    new ViewAppearance(engine, settings.store, look);
    EXPECT_TRUE(isReduced());
    look.setMotionReduced(false);
    EXPECT_FALSE(isReduced());
}

TEST_F(ViewAppearanceTest, SupportsSeveralEngines) {
    QQmlEngine other;
    new ViewAppearance(engine, settings.store, look);
    new ViewAppearance(other, settings.store, look);
    settings.store.setAppearance(AppAppearance::Light);
    EXPECT_FALSE(isDark());
}
