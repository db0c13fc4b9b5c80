import QtQuick
import Tolmi
import TolmiTesting

ViewCase {
    name: "DictationLive"
    width: 880
    fixtures: Component {
        DictationLiveFixture { }
    }
    views: Component {
        StudioDictationLiveView { }
    }

    function dictationButton() {
        return shown(item => item instanceof DictationButton)[0];
    }
    function orb() {
        return shown(item => item instanceof VoiceOrbView)[0];
    }

    function test_restsWhileIdle() {
        verify(shows("Ready"));
        verify(shows("Hotkey: Right Alt (AltGr)"));
        verify(!orb().isActive);
        compare(shown(item => item instanceof Spinner).length, 0);
        compare(dictationButton().text, "Start Recording");
        verify(!shows("Last Transcript"));
    }
    function test_orbFollowsTheVoice() {
        fixture.setLevel(1);
        fixture.reach("Recording");
        verify(orb().isActive);
        verify(orb().level > 0);
        compare(dictationButton().text, "Stop + Transcribe");
        compare(dictationButton().tone, StudioButton.Danger);
    }
    function test_showsWhatItWaitsFor_data() {
        return [
            { tag: "Transcribing", message: "Processing... wait for current transcription to finish." },
            { tag: "OptimizingQuality", message: "Optimizing quality..." }
        ];
    }
    function test_showsWhatItWaitsFor(data) {
        const place = placeOf(dictationButton()).y;
        fixture.reach(data.tag);
        verify(shows(data.message));
        compare(shown(item => item instanceof Spinner).length, 1);
        verify(!dictationButton().enabled);
        verify(!orb().isActive);
        compare(placeOf(dictationButton()).y, place);
    }
    function test_showsTheError() {
        fixture.reach("Error");
        verify(shows("Microphone access denied"));
        press(dictationButton().text);
        verify(shows("Microphone access denied"));
        fixture.advance(3);
        verify(!shows("Microphone access denied"));
    }
    function test_dictatesFromTheButtonAndCopies() {
        fixture.allowRecording();
        press(dictationButton().text);
        fixture.prepareTranscript("Please move the review.");
        press(dictationButton().text);
        verify(shows("Last Transcript"));
        verify(shows("Please move the review."));
        mouseClick(shown(item => item instanceof StudioButton && item.text === "Copy")[0]);
        compare(fixture.copiedText, "Please move the review.");
    }
    function test_longTranscriptScrolls() {
        compare(view.contentHeight, view.height);
        fixture.dictateText("word ".repeat(2000));
        tryVerify(() => view.contentHeight > view.height);
        verify(placeOf(dictationButton()).y >= 0);
    }
    function test_speaksRomanian() {
        fixture.speakRomanian();
        verify(shows("Dictare live"));
        verify(shows("Gata"));
        compare(dictationButton().text, "Porneste inregistrarea");
    }
    function test_tabReachesEveryControl() {
        fixture.dictateText("words");
        compare(tabOrder(3), ["Start Recording", "Copy", "words"]);
    }
}
