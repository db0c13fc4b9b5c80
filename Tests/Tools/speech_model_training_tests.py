"""Tests of the numerical parts of Tools/speech-model, which need the training's packages."""

import pathlib
import random
import sys
import tempfile
import unittest

import numpy
import torch

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "Tools/speech-model"))

from tolmi_speech import (  # noqa: E402
    batches, evaluation, front_end, ggml_file, grammar, network, orthogonal, recordings, report, scenes, tokens, training,
    utterances, variants, windows)

RATE = front_end.RATE


class Spectrum(unittest.TestCase):
    def test_a_tone_lies_in_the_band_of_its_pitch(self):
        for hertz in (200, 1000, 4000):
            moments = numpy.arange(RATE) / RATE
            mel = front_end.of_recording(0.5 * numpy.sin(2 * numpy.pi * hertz * moments).astype(numpy.float32))
            loudest = int(mel[40].argmax())
            peak = numpy.argmax(front_end.FILTERS[loudest]) * RATE / front_end.WINDOW
            self.assertLess(abs(peak - hertz), 0.06 * hertz + RATE / front_end.WINDOW, hertz)

    def test_nothing_lies_more_than_the_dynamic_range_below_the_loudest(self):
        mel = front_end.of_recording(numpy.random.default_rng(1).standard_normal(RATE).astype(numpy.float32))
        self.assertAlmostEqual(float(mel.max() - mel.min()), front_end.DYNAMIC_RANGE / 4, places=5)


class Steps(unittest.TestCase):
    def test_every_direction_counts_about_the_same(self):
        torch.manual_seed(1)
        for rows, columns in ((16, 16), (48, 16), (16, 48)):
            lengths = torch.linalg.svdvals(orthogonal.orthogonalized(torch.randn(rows, columns)))
            self.assertGreater(float(lengths.min()), 0.3, (rows, columns))
            self.assertLess(float(lengths.max()), 1.4, (rows, columns))

    def test_the_steps_lead_downhill(self):
        torch.manual_seed(1)
        wanted, learnt = torch.randn(8, 8), torch.nn.Parameter(torch.zeros(8, 8))
        optimizer = orthogonal.Muon([learnt], lr=0.05)
        first = float(((learnt - wanted) ** 2).sum())
        for _ in range(200):
            optimizer.zero_grad()
            ((learnt - wanted) ** 2).sum().backward()
            optimizer.step()
        self.assertLess(float(((learnt - wanted) ** 2).sum()), 0.05 * first)


class File(unittest.TestCase):
    def test_eight_bits_keep_what_they_were_given(self):
        values = numpy.random.default_rng(1).standard_normal((4, 64)).astype(numpy.float32)
        blocks = numpy.frombuffer(ggml_file.as_blocks(values), numpy.uint8).reshape(-1, 2 + ggml_file.BLOCK)
        scales = blocks[:, :2].copy().view(numpy.float16).astype(numpy.float32)
        kept = (blocks[:, 2:].view(numpy.int8) * scales).reshape(values.shape)
        self.assertLess(numpy.abs(kept - values).max(), 0.02)

    def test_a_block_of_nothing_stays_nothing(self):
        self.assertEqual(set(ggml_file.as_blocks(numpy.zeros((1, 32)))), {0})


class Voices(unittest.TestCase):
    def test_random_variants_are_the_same_each_time(self):
        first, second = random.Random(3), random.Random(3)
        self.assertEqual(variants.description("a", first), variants.description("a", second))

    def test_the_data_holds_the_variants_beside_those_of_espeak(self):
        with tempfile.TemporaryDirectory() as folder:
            data = variants.make_data(folder)
            here = {path.name for path in (data / "voices" / variants.VARIANTS).iterdir()}
        self.assertLessEqual({name[1:] for name in variants.names()}, here)
        self.assertLessEqual({name[1:] for name in utterances.SEEN_VARIANTS}, here)

    def test_the_examination_asks_voices_that_no_training_heard(self):
        heard = {*utterances.SEEN_VARIANTS, *variants.names()}
        self.assertEqual(heard & {*utterances.UNSEEN_VARIANTS, *utterances.ODD_VARIANTS}, set())


def _utterance(text, seconds_each=0.4):
    """Noise instead of speech, one stretch per word."""
    written = grammar.tokens(text)
    spans, sounds, moment = [], [], 0.0
    for token in written:
        spans.append(None if token in grammar.PUNCTUATION else (moment, moment + seconds_each))
        if spans[-1]:
            sounds.append(("a", moment))
            moment += seconds_each
    samples = numpy.random.default_rng(len(text)).integers(-9000, 9000, int(moment * RATE)).astype(numpy.int16)
    return utterances.Utterance("en", "en-us", text, written, spans, sounds, samples)


def _scene(text):
    return scenes.joined([_utterance(text)], random.Random(1))


class Scenes(unittest.TestCase):
    def test_what_is_cut_ends_with_the_last_sentence_that_ends_late_enough(self):
        scene = _scene("Buy salt. Call Maria. Send the report today.")
        ends = [span[1] for _, span in scene.items if span]
        self.assertTrue(scene.cut(ends[1], ends[5]))
        self.assertEqual([token for token, _ in scene.text], [" Buy", " salt", ".", " Call", " Maria", "."])
        self.assertEqual(scene.end, ends[3])

    def test_without_such_a_sentence_it_ends_with_the_last_whole_word(self):
        scene = _scene("Buy salt. Call Maria. Send the report today.")
        ends = [span[1] for _, span in scene.items if span]
        self.assertTrue(scene.cut(ends[3] + 0.01, ends[5]))
        self.assertEqual([token for token, _ in scene.text][-2:], [" Send", " the"])

    def test_where_no_word_ends_in_time_nothing_is_left(self):
        scene = _scene("Buy salt.")
        self.assertFalse(scene.cut(0.0, scene.items[0][1][1] - 0.01))

    def test_neighbours_have_the_same_voice(self):
        texts = ("Please send the report.", "Please call.", "The meeting is on Monday at nine.")
        spoken = [_utterance(text) for text in texts]
        spoken[1].voice = "en-gb"
        pool, drawing = scenes.Pool(spoken, grammar.grammars()), random.Random(1)
        self.assertEqual({pool.neighbour(spoken[0], drawing).text for _ in range(99)}, {texts[0], texts[2]})


class Windows(unittest.TestCase):
    def setUp(self):
        self.shape = network.Shape()
        self.grammars = grammar.grammars()
        self.table = tokens.Tokens(self.grammars, self.shape.timestamps)
        texts = ("Please send the report.", "Thank you for your help.", "The meeting is on Monday at nine.")
        self.pool = scenes.Pool([_utterance(text) for text in texts], self.grammars)

    def _composer(self, seed):
        return windows.Composer(
            self.pool, self.table, self.shape, random.Random(seed), numpy.random.default_rng(seed))

    def test_every_token_has_a_target_and_a_place(self):
        composer = self._composer(1)
        for steps in (128, 256, 512) * 20:
            one = composer.window(steps)
            self.assertEqual(len(one.sequence), len(one.targets))
            self.assertEqual(len(one.sequence) + 1, len(one.spans))
            self.assertEqual(len(one.sound_labels), steps)
            self.assertEqual(one.targets[-1], tokens.END)
            self.assertLess(len(one.sequence), self.shape.text_context)

    def test_spans_lie_within_the_window(self):
        composer = self._composer(2)
        for _ in range(60):
            one = composer.window(512)
            for begin, end in (span for span in one.spans if span):
                self.assertLess(begin, end)
                self.assertLessEqual(end, self.shape.window_seconds)

    def test_behind_the_last_word_nothing_is_written(self):
        composer = self._composer(5)
        empty = [one for one in (composer.window(512) for _ in range(200))
                 if one.sequence[-1] == tokens.FIRST_TIMESTAMP and one.targets[-1] == tokens.END]
        self.assertTrue(any(one.louder > 1 for one in empty), "silence after speech is heard beside it")

    def test_what_was_written_before_is_shown_only_while_enough_is_left(self):
        composer = self._composer(6)
        reminded = [one for one in (composer.window(512) for _ in range(200)) if tokens.PREVIOUS in one.sequence]
        self.assertTrue(reminded)
        for one in reminded:
            self.assertGreater(one.heard / RATE, windows.FORGETTING_SECONDS)

    def test_what_is_remembered_may_be_of_several_windows_and_fits(self):
        composer = self._composer(8)
        made = [one.sequence for one in (composer.window(512) for _ in range(300))]
        remembered = [one[1:one.index(tokens.START)] for one in made if tokens.PREVIOUS in one]
        self.assertTrue(any(one.count(tokens.FIRST_TIMESTAMP) > 1 for one in remembered))
        # whisper-cli keeps half of the text context, of which one token is the start marker.
        self.assertEqual(max(len(one) for one in remembered), self.shape.text_context // 2 - 1)

    def test_a_window_that_ends_within_the_speech_tells_where_the_next_begins(self):
        composer = self._composer(7)
        cut = [one for one in (composer.window(512) for _ in range(200)) if one.sequence[-1] == one.sequence[-2]]
        self.assertTrue(cut)
        half = self.table.timestamp(windows.LEAST_PART * self.shape.window_seconds)
        for one in cut:
            self.assertGreater(one.heard / RATE, self.shape.window_seconds - windows.CUT_MARGIN)
            self.assertGreaterEqual(one.sequence[-1], half)

    def test_the_same_seed_makes_the_same_windows(self):
        first, second = self._composer(3), self._composer(3)
        for _ in range(10):
            one, two = first.window(256), second.window(256)
            self.assertEqual(one.sequence, two.sequence)
            self.assertTrue(numpy.array_equal(one.samples, two.samples))

    def test_learning_one_batch_by_heart_lowers_its_loss(self):
        torch.manual_seed(1)
        learning = network.Network(self.shape, len(self.table.used), len(self.pool.sound_kinds) + 1,
                                   len(self.pool.word_kinds) + 1)
        composer, generator = self._composer(4), numpy.random.default_rng(4)
        batch = batches.batch([composer.window(128) for _ in range(2)], self.table, generator)
        first = float(training.losses(learning, batch)[0])
        optimizers = training.optimizers(learning)
        for _ in range(10):
            loss, _ = training.losses(learning, batch)
            learning.zero_grad()
            loss.backward()
            for optimizer in optimizers:
                optimizer.step()
        self.assertLess(float(training.losses(learning, batch)[0]), 0.8 * first)

    def test_a_training_that_is_over_does_not_go_on(self):
        with tempfile.TemporaryDirectory() as folder:
            path = str(pathlib.Path(folder) / "checkpoint")
            first = training.Trainer(self.pool, self.table, path, 1)
            first.run(1, lambda *_: None)
            self.assertGreater(first.step, 0)
            again = training.Trainer(self.pool, self.table, path, 1)
            again.run(1, lambda *_: None)
            self.assertEqual(again.step, first.step)
            for one, two in zip(first.network.parameters(), again.network.parameters()):
                self.assertTrue(torch.equal(one, two))


class Examination(unittest.TestCase):
    def test_words_that_are_wrong_are_counted(self):
        for said, heard, errors in (("a b c", "a b c", 0), ("a b c", "a c", 1), ("a b c", "a x c", 1), ("a b", "a b c", 1),
                                    ("a b c", "", 3), ("", "a", 1), ("A, b.", "a b", 0)):
            self.assertEqual(evaluation.distance(evaluation.words(said), evaluation.words(heard)), errors, (said, heard))

    def test_a_goal_that_is_missed_is_told(self):
        result = _Result(errors=1)
        self.assertIn("| word errors, plain voices | at most 1.0 % | 10.0 % | **no** |", report.text(result))
        self.assertIn("| word errors, plain voices | at most 1.0 % | 0.0 % | yes |", report.text(_Result(errors=0)))

    def test_noise_lies_as_far_below_as_asked(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "tone.wav"
            clean = 0.3 * numpy.sin(numpy.arange(RATE) / 5)
            recordings.write(path, clean)
            maker = recordings.Maker(folder, 1)
            noisy = maker.with_noise(recordings.Recording(str(path), "en", "plain", "", "", 1), 20)
            left = recordings.read(noisy.path) - recordings.read(path)
        self.assertAlmostEqual(20 * numpy.log10(clean.std() / left.std()), 20, delta=0.5)


class _Result(evaluation.Evaluation):
    """An evaluation of ten words per kind of voice, with the given number of errors each."""

    def __init__(self, errors):
        tally = evaluation.Tally(recordings=1, words=10, errors=errors, exact=1 - errors, audio=4)
        self.short_rows = [evaluation.Row(name, noise, "en", group, tally) for name in evaluation.PASSES
                           for noise in recordings.NOISES for group in recordings.GROUPS]
        self.long_rows = [evaluation.Row(evaluation.PLAIN, "clean", "en", "long", tally)]
        self.longest_rows = [evaluation.Row(evaluation.PLAIN, "clean", "en", "longest", tally)]
        self.found, self.silences, self.four_seconds = {"en": (1, 1)}, tally, [0.2]


if __name__ == "__main__":
    unittest.main()
