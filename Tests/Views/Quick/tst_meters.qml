import QtQuick
import QtTest
import Tolmi

TestCase {
    id: test

    name: "Meters"
    when: windowShown
    width: 400
    height: 400
    visible: true

    Component {
        id: orb

        VoiceOrbView { }
    }
    Component {
        id: wave

        SignalWaveView { }
    }
    Component {
        id: pill

        StatusPill {
            icon: "hourglass"
            text: "Transcribing"
        }
    }

    function test_orbRestsUnlessActive() {
        const meter = createTemporaryObject(orb, test, { level: 0.5 });
        fuzzyCompare(meter.opacity, 0.6, 0.001);
        const seconds = meter.seconds;
        wait(60);
        compare(meter.seconds, seconds);
    }
    function test_orbMovesWhileActive() {
        const meter = createTemporaryObject(orb, test, { isActive: true });
        compare(meter.opacity, 1);
        const first = meter.seconds;
        tryVerify(() => meter.seconds > first);
    }
    function test_orbClampsItsLevel() {
        const meter = createTemporaryObject(orb, test, { level: 7 });
        compare(meter.clampedLevel, 1);
        meter.level = -1;
        compare(meter.clampedLevel, 0);
    }
    function test_waveIsAsWideAsItsBars() {
        const meter = createTemporaryObject(wave, test);
        compare(meter.bars, 28);
        compare(meter.implicitWidth, 28 * 7 - 4);
        meter.bars = 1;
        compare(meter.implicitWidth, 3);
        compare(meter.implicitHeight, 72);
    }
    function test_pillTones() {
        const control = createTemporaryObject(pill, test);
        TolmiPalette.scheme = PaletteColors.Dark;
        verify(Qt.colorEqual(control.foreground, TolmiPalette.frost));
        control.tone = StatusPill.Success;
        verify(Qt.colorEqual(control.foreground, TolmiPalette.ink));
        control.tone = StatusPill.Accent;
        verify(Qt.colorEqual(control.foreground, TolmiPalette.ink));
        control.tone = StatusPill.Danger;
        verify(Qt.colorEqual(control.foreground, TolmiPalette.frost));
        compare(control.height, 24);
    }
}
