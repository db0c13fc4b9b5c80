import QtQuick
import QtTest
import Tolmi

/// What the pills, buttons and panels are drawn with, in both schemes.
TestCase {
    id: test

    name: "Plates"
    when: windowShown
    width: 400
    height: 300
    visible: true

    property int formerScheme

    Component {
        id: pills

        StatusPill {
            icon: "hourglass"
            text: "Working"
        }
    }
    Component {
        id: buttons

        StudioButton {
            text: "Continue"
        }
    }
    Component {
        id: panels

        GlassPanel {
            Item {
                objectName: "content"
                width: 100
                height: 40
            }
        }
    }

    function initTestCase() {
        formerScheme = TolmiPalette.scheme;
    }
    function cleanup() {
        TolmiPalette.scheme = formerScheme;
    }
    function itemsBelow(item, condition) {
        let found = [];
        for (let index = 0; index < item.children.length; ++index) {
            const child = item.children[index];
            if (condition(child))
                found.push(child);
            found = found.concat(itemsBelow(child, condition));
        }
        return found;
    }
    function only(item, condition) {
        const found = itemsBelow(item, condition);
        compare(found.length, 1);
        return found[0];
    }
    function plateOf(item) {
        return only(item, child => child instanceof Plate);
    }
    function faded(color: color, opacity: real): color {
        return Qt.rgba(color.r, color.g, color.b, color.a * opacity);
    }
    function inBothSchemes(rows) {
        const of = (scheme, name) => rows.map(row => Object.assign({ scheme: scheme }, row, { tag: row.tag + name }));
        return of(PaletteColors.Dark, " dark").concat(of(PaletteColors.Light, " light"));
    }

    function test_pill_data() {
        const p = TolmiPalette;
        return inBothSchemes([
            { tag: "neutral", tone: StatusPill.Neutral,
              look: () => [p.surfaceStroke, p.surfaceFill, p.frost] },
            { tag: "success", tone: StatusPill.Success,
              look: () => [faded(p.cloud, 0.7), faded(p.frost, 0.5), p.ink] },
            { tag: "accent", tone: StatusPill.Accent, look: () => [p.cloud, p.frost, p.ink] },
            { tag: "danger", tone: StatusPill.Danger,
              look: () => [faded(p.slate, 0.94), faded(p.graphite, 0.92), p.frost] }
        ]);
    }
    function test_pill(data) {
        TolmiPalette.scheme = data.scheme;
        const pill = createTemporaryObject(pills, test, { tone: data.tone });
        const [fill, endFill, foreground] = data.look();
        const plate = plateOf(pill);
        compare(plate.fill, fill);
        compare(plate.endFill, endFill);
        compare(plate.gradientEnd, Qt.point(1, 1));
        compare(plate.border, TolmiPalette.chipStroke);
        compare(plate.radius, 8);
        const label = only(pill, child => child instanceof StudioText);
        compare(String(label.color), String(foreground));
        compare(label.font.pixelSize, 11);
        fuzzyCompare(label.font.letterSpacing, 0.3, 0.02);
        compare(String(only(pill, child => child instanceof Symbol).color), String(foreground));
    }

    function test_button_data() {
        const p = TolmiPalette;
        return inBothSchemes([
            { tag: "primary", tone: StudioButton.Primary,
              look: () => [p.frost, p.cloud, p.ink, p.surfaceStroke] },
            { tag: "secondary", tone: StudioButton.Secondary,
              look: () => [faded(p.slate, 0.9), faded(p.graphite, 0.86), p.frost, p.chipStroke] },
            { tag: "muted", tone: StudioButton.Muted,
              look: () => [p.chipFill, p.subtleFill, p.frost, p.keycapStroke] },
            { tag: "danger", tone: StudioButton.Danger,
              look: () => [Qt.rgba(0, 0, 0, 0.94), p.graphite, Qt.rgba(1, 1, 1, 1), Qt.rgba(1, 1, 1, 0.22)] }
        ]);
    }
    function test_button(data) {
        TolmiPalette.scheme = data.scheme;
        const button = createTemporaryObject(buttons, test, { tone: data.tone });
        const [fill, endFill, foreground, border] = data.look();
        const plate = plateOf(button);
        compare(plate.fill, fill);
        compare(plate.endFill, endFill);
        compare(plate.border, border);
        compare(plate.radius, 9);
        fuzzyCompare(plate.highlight.a, 0.24, 0.01);
        const label = only(button, child => child instanceof StudioText);
        compare(String(label.color), String(foreground));
        compare(label.font.pixelSize, 13);
        fuzzyCompare(label.font.letterSpacing, 0.4, 0.02);
        compare(button.leftPadding, 14);
        compare(button.rightPadding, 14);
        compare(button.topPadding, 10);
        compare(button.bottomPadding, 10);
    }

    function test_panel_data() {
        return inBothSchemes([{ tag: "panel" }]);
    }
    function test_panel(data) {
        TolmiPalette.scheme = data.scheme;
        const panel = createTemporaryObject(panels, test);
        compare(panel.width, 136);
        compare(panel.height, 76);
        const content = findChild(panel, "content");
        compare(content.mapToItem(panel, 0, 0), Qt.point(18, 18));
        const plate = plateOf(panel);
        compare(plate.radius, 12);
        compare(plate.fill, TolmiPalette.panelFill);
        compare(plate.endFill, TolmiPalette.panelSecondaryFill);
        compare(plate.border, TolmiPalette.panelStroke);
        compare(plate.hairline, TolmiPalette.panelEdgeStroke);
        const shadow = only(panel, child => child instanceof SoftShadow);
        compare([shadow.sigma, shadow.offsetY, shadow.radius], [14, 10, 12]);
        compare(shadow.color, TolmiPalette.panelInnerShadow);
    }
}
