import QtQuick
import QtTest
import Tolmi

/// The geometry of one way to draw the backdrop, layer by layer: each layer alone, in colours in which it shows.
TestCase {
    id: test

    /// Draws the backdrop from the properties of `layers`.
    required property Component drawing
    /// Whether the tests run on the renderer that `drawing` is for.
    required property bool hasRenderer

    readonly property color nothing: "transparent"
    readonly property color gray: Qt.rgba(0.5, 0.5, 0.5, 1)
    /// Half covering.
    readonly property color white: Qt.rgba(1, 1, 1, 0.5)
    readonly property color black: Qt.rgba(0, 0, 0, 0.5)
    readonly property real tolerance: 3 / 255
    property var picture: null

    when: windowShown
    width: 900
    height: 700
    visible: true

    QtObject {
        id: layers

        property color ink
        property color graphite
        property color slate
        property color veilStrong
        property color veilSoft
        property color sweepStrong
        property color sweepSoft
        property color mesh
        property color vignette
        property real drift
    }
    Loader {
        id: place

        property alias layers: layers

        anchors.fill: parent
        sourceComponent: test.drawing
    }

    function initTestCase() {
        verify(hasRenderer, "the renderer of these tests");
    }
    /// Draws with these layers only, over gray.
    function draw(changes: var) {
        for (const name of ["ink", "graphite", "slate"])
            layers[name] = gray;
        for (const name of ["veilStrong", "veilSoft", "sweepStrong", "sweepSoft", "mesh", "vignette"])
            layers[name] = nothing;
        layers.drift = 0;
        Object.assign(layers, changes);
        waitForRendering(place);
        picture = grabImage(place);
        compare([picture.width, picture.height], [width, height]);
    }
    function expectLevel(x: real, y: real, expected: real) {
        const level = picture.red(x, y) / 255;
        verify(Math.abs(level - expected) <= tolerance, `${level} instead of ${expected} at ${x}, ${y}`);
    }
    /// Calls `check` for pixels all over the picture, with the middle of each.
    function everywhere(check: var) {
        for (let y = 3; y < height; y += 29) {
            for (let x = 5; x < width; x += 31)
                check(x, y, x + 0.5, y + 0.5);
        }
    }
    /// The error function, by its series.
    function erf(x: real): real {
        if (Math.abs(x) > 4)
            return Math.sign(x);
        let term = x;
        let sum = x;
        for (let index = 1; index < 80; ++index) {
            term *= -x * x / index;
            sum += term / (2 * index + 1);
        }
        return 2 / Math.sqrt(Math.PI) * sum;
    }
    function blurredBox(distance: real, size: real, radius: real): real {
        const scale = radius * Math.SQRT2;
        return (erf((distance + size / 2) / scale) - erf((distance - size / 2) / scale)) / 2;
    }
    /// How much of a blurred rectangle as wide as the window, turned by `degrees` round its center, is at a place.
    function sweepAt(x: real, y: real, sweep: var): real {
        const angle = sweep.degrees * Math.PI / 180;
        const awayX = x - width / 2 - sweep.x;
        const awayY = y - height / 2 - sweep.y;
        return blurredBox(Math.cos(angle) * awayX + Math.sin(angle) * awayY, width, sweep.radius)
             * blurredBox(Math.cos(angle) * awayY - Math.sin(angle) * awayX, sweep.height, sweep.radius);
    }

    function test_baseRunsFromCornerToCorner() {
        draw({ ink: "black", graphite: Qt.rgba(0.25, 0.25, 0.25, 1), slate: "white" });
        everywhere((x, y, midX, midY) => {
            const way = (midX / width + midY / height) / 2;
            expectLevel(x, y, way < 0.5 ? way * 0.5 : 0.25 + (way - 0.5) * 1.5);
        });
    }
    function test_veilRunsFromTheTopRight() {
        draw({ veilStrong: Qt.rgba(1, 1, 1, 0.8), veilSoft: Qt.rgba(1, 1, 1, 0.2) });
        everywhere((x, y, midX, midY) => {
            const way = (1 - midX / width + midY / height) / 2;
            expectLevel(x, y, 0.5 + 0.5 * (0.8 - 0.6 * way));
        });
    }
    function test_sweeps_data() {
        const strong = x => ({ layer: "sweepStrong", degrees: -18, height: 120, radius: 28, x: x, y: -140 });
        const soft = (x, y) => ({ layer: "sweepSoft", degrees: 24, height: 80, radius: 20, x: x, y: y });
        return [{ tag: "strong at one end", drift: 0, sweep: strong(-220) },
                { tag: "strong at the other", drift: 1, sweep: strong(220) },
                { tag: "soft at one end", drift: 0, sweep: soft(180, 120) },
                { tag: "soft at the other", drift: 1, sweep: soft(-180, 180) }];
    }
    function test_sweeps(data) {
        draw({ [data.sweep.layer]: white, drift: data.drift });
        everywhere((x, y, midX, midY) => expectLevel(x, y, 0.5 + 0.25 * sweepAt(midX, midY, data.sweep)));
    }
    function test_meshIsOfThinLinesEighteenApart() {
        draw({ mesh: "white" });
        for (const y of [0, 100, 333, height - 1]) {
            for (let x = 0; x < width; ++x) {
                // The lines go through (18 n - height, 0) and down to the right.
                const beside = ((x - y + height) % 18 + 18) % 18;
                if (beside === 0)
                    verify(picture.red(x, y) > 160, `a line at ${x}, ${y}`);
                else if (beside > 1 && beside < 17)
                    expectLevel(x, y, 0.5);
            }
        }
    }
    function test_vignetteFallsFromTheMiddle() {
        draw({ vignette: black });
        everywhere((x, y, midX, midY) => {
            expectLevel(x, y, 0.5 * (1 - 0.5 * Math.max(0, 2 * midY / height - 1)));
        });
    }
}
