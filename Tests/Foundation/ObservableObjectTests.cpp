#include "Foundation/ObservableObject.h"

#include <QMetaProperty>
#include <QStringList>

#include <gtest/gtest.h>

namespace {
class Thermostat final : public ObservableObject {
    Q_OBJECT
    TOLMI_PUBLISHED(int, degrees, setDegrees, limit())
    TOLMI_PUBLISHED(QString, place, setPlace)
    TOLMI_PUBLISHED_READONLY(bool, isHeating, setIsHeating)
    Q_PROPERTY(int shown READ degrees NOTIFY degreesChanged)

public:
    void heat() { setIsHeating(true); }

    /// Runs inside the rule.
    std::function<void()> onRule = [] {};

private:
    void limit() {
        onRule();
        if (degrees() > 30)
            setDegrees(30);
    }
};

class ObservableObjectTest : public testing::Test {
protected:
    ObservableObjectTest() {
        QObject::connect(&thermostat, &ObservableObject::objectWillChange, [this] { note("object"); });
        QObject::connect(&thermostat, &Thermostat::degreesWillChange,
            [this](int next) { note("-> " + std::to_string(next)); });
        QObject::connect(&thermostat, &Thermostat::degreesChanged, [this] { note("changed"); });
        thermostat.onRule = [this] { note("rule"); };
    }

    /// Records an event with the value that is readable at that moment.
    void note(const std::string &event) {
        events.append(QString::number(thermostat.degrees()) + u' ' + QString::fromStdString(event));
    }

    QString told() {
        const QString text = events.join(u'|');
        events.clear();
        return text;
    }

    Thermostat thermostat;
    QStringList events;
};
} // namespace

TEST_F(ObservableObjectTest, AnnouncesStoresRunsTheRuleThenNotifiesQml) {
    thermostat.setDegrees(20);
    EXPECT_EQ(told(), u"0 object|0 -> 20|20 rule|20 changed");
}

TEST_F(ObservableObjectTest, AnEqualValueIsAnnouncedAndRunsTheRuleWithoutAChange) {
    thermostat.setDegrees(20);
    told();
    thermostat.setDegrees(20);
    EXPECT_EQ(told(), u"20 object|20 -> 20|20 rule");
}

TEST_F(ObservableObjectTest, AnAssignmentInTheRuleIsAnnouncedAgainButIsOneChange) {
    thermostat.setDegrees(50);
    EXPECT_EQ(told(), u"0 object|0 -> 50|50 rule|50 object|50 -> 30|30 rule|30 changed");
    thermostat.setDegrees(40);
    EXPECT_EQ(told(), u"30 object|30 -> 40|40 rule|40 object|40 -> 30|30 rule");
}

TEST_F(ObservableObjectTest, AnAssignmentByAChangeObserverIsASeparateChange) {
    QObject::connect(&thermostat, &Thermostat::degreesChanged, [this] {
        if (thermostat.degrees() == 20)
            thermostat.setDegrees(21);
    });
    thermostat.setDegrees(20);
    EXPECT_EQ(told(), u"0 object|0 -> 20|20 rule|20 changed|20 object|20 -> 21|21 rule|21 changed");
}

TEST_F(ObservableObjectTest, TheRuleIsOptional) {
    int changes = 0;
    QObject::connect(&thermostat, &Thermostat::placeChanged, [&] { ++changes; });
    thermostat.setPlace(QStringLiteral("hall"));
    thermostat.setPlace(QStringLiteral("hall"));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(told(), u"0 object|0 object");
}

TEST_F(ObservableObjectTest, ViewsWriteOnlyFieldsWithAPublicSetter) {
    EXPECT_TRUE(thermostat.setProperty("place", QStringLiteral("hall")));
    EXPECT_EQ(thermostat.place(), u"hall");
    const QMetaObject *const meta = thermostat.metaObject();
    EXPECT_FALSE(meta->property(meta->indexOfProperty("isHeating")).isWritable());
    thermostat.heat();
    EXPECT_TRUE(thermostat.property("isHeating").toBool());
}

#include "ObservableObjectTests.moc"
