#include "Views/ViewsFixture.h"

#include <QColor>
#include <QQmlComponent>

#include <memory>

namespace {

struct Shade {
    double red, green, blue, alpha;
};

struct Row {
    const char *name;
    Shade light;
    Shade dark;
};

constexpr Row tint(const char *name, double light, double dark) {
    return { name, { 0, 0, 0, light }, { 1, 1, 1, dark } };
}

constexpr Row table[] {
    { "ink", { 0.98, 0.98, 0.985, 1 }, { 0.02, 0.02, 0.03, 1 } },
    { "graphite", { 0.93, 0.93, 0.94, 1 }, { 0.08, 0.08, 0.09, 1 } },
    { "slate", { 0.86, 0.86, 0.87, 1 }, { 0.14, 0.14, 0.15, 1 } },
    { "smoke", { 0.34, 0.34, 0.36, 1 }, { 0.56, 0.56, 0.58, 1 } },
    { "cloud", { 0.2, 0.2, 0.22, 1 }, { 0.84, 0.84, 0.86, 1 } },
    { "frost", { 0.08, 0.08, 0.1, 1 }, { 0.97, 0.97, 0.98, 1 } },
    { "base", { 0.93, 0.93, 0.94, 1 }, { 0.08, 0.08, 0.09, 1 } },
    { "baseDeep", { 0.98, 0.98, 0.985, 1 }, { 0.02, 0.02, 0.03, 1 } },
    { "cobalt", { 0.2, 0.2, 0.22, 1 }, { 0.84, 0.84, 0.86, 1 } },
    { "mint", { 0.2, 0.2, 0.22, 1 }, { 0.84, 0.84, 0.86, 1 } },
    { "cyan", { 0.08, 0.08, 0.1, 1 }, { 0.97, 0.97, 0.98, 1 } },
    { "coral", { 0.34, 0.34, 0.36, 1 }, { 0.56, 0.56, 0.58, 1 } },
    { "lilac", { 0.34, 0.34, 0.36, 1 }, { 0.56, 0.56, 0.58, 1 } },
    tint("panelFill", 0.06, 0.06),
    tint("panelSecondaryFill", 0.02, 0.015),
    tint("panelStroke", 0.18, 0.24),
    { "panelEdgeStroke", { 1, 1, 1, 0.45 }, { 0, 0, 0, 0.32 } },
    { "panelInnerShadow", { 0, 0, 0, 0.12 }, { 0, 0, 0, 0.34 } },
    tint("focusFill", 0.1, 0.11),
    tint("focusStroke", 0.3, 0.36),
    tint("surfaceFill", 0.08, 0.08),
    tint("surfaceStroke", 0.18, 0.16),
    tint("chipFill", 0.1, 0.1),
    tint("chipStroke", 0.16, 0.16),
    tint("keycapFill", 0.1, 0.1),
    tint("keycapStroke", 0.18, 0.15),
    tint("editorFill", 0.06, 0.06),
    tint("editorStroke", 0.18, 0.18),
    tint("subtleFill", 0.05, 0.05),
    tint("backdropVeilStrong", 0.1, 0.1),
    tint("backdropVeilSoft", 0.04, 0.04),
    tint("backdropSweepStrong", 0.1, 0.12),
    tint("backdropSweepSoft", 0.07, 0.08),
    tint("backdropMesh", 0.05, 0.045),
    { "backdropVignette", { 0, 0, 0, 0.12 }, { 0, 0, 0, 0.3 } },
};

void expectShade(const QColor &color, const Shade &shade, const char *name) {
    // Colours are stored with 16 bits per component.
    constexpr double tolerance = 1.0 / 65535;
    EXPECT_NEAR(double(color.redF()), shade.red, tolerance) << name;
    EXPECT_NEAR(double(color.greenF()), shade.green, tolerance) << name;
    EXPECT_NEAR(double(color.blueF()), shade.blue, tolerance) << name;
    EXPECT_NEAR(double(color.alphaF()), shade.alpha, tolerance) << name;
}

class Palette : public ViewsFixture {
protected:
    std::unique_ptr<QObject> create(const char *qml) {
        QQmlComponent component(&engine);
        component.setData(QByteArray("import Tolmi\nimport QtQuick\n") + qml, QUrl());
        return std::unique_ptr<QObject>(component.create());
    }
};

} // namespace

TEST_F(Palette, EveryColorInBothSchemes) {
    const auto palette = create("PaletteColors { scheme: PaletteColors.Light }");
    ASSERT_TRUE(palette);
    for (const Row &row : table)
        expectShade(palette->property(row.name).value<QColor>(), row.light, row.name);
    palette->setProperty("scheme", 1);
    for (const Row &row : table)
        expectShade(palette->property(row.name).value<QColor>(), row.dark, row.name);
}

TEST_F(Palette, GradientsFollowTheScheme) {
    const auto palette = create("PaletteColors { scheme: PaletteColors.Light }");
    ASSERT_TRUE(palette);
    for (const int scheme : { 0, 1 }) {
        palette->setProperty("scheme", scheme);
        const auto expectGradient = [&](const char *gradient, std::initializer_list<const char *> names) {
            const QVariantList colors = palette->property(gradient).value<QVariantList>();
            ASSERT_EQ(colors.size(), qsizetype(names.size())) << gradient;
            qsizetype index = 0;
            for (const char *name : names)
                EXPECT_EQ(colors[index++].value<QColor>(), palette->property(name).value<QColor>())
                    << gradient;
        };
        expectGradient("backgroundGradient", { "ink", "graphite", "slate" });
        expectGradient("accentGradient", { "cloud", "frost" });
        expectGradient("warningGradient", { "slate", "graphite" });
    }
}

TEST_F(Palette, EverythingSwitchesAtOnce) {
    const auto item = create("Item { property color seen: TolmiPalette.ink\n"
                             "function turn(scheme) { TolmiPalette.scheme = scheme } }");
    ASSERT_TRUE(item);
    expectShade(item->property("seen").value<QColor>(), table[0].dark, "ink");
    QMetaObject::invokeMethod(item.get(), "turn", Q_ARG(QVariant, 0));
    expectShade(item->property("seen").value<QColor>(), table[0].light, "ink");
}
