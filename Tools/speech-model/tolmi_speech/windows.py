"""Arranges utterances in windows as whisper-cli processes them, with noise, silence and neighbours, and provides the
expected output of each."""

import dataclasses

import numpy
import torch

from . import front_end, grammar, scenes, tokens

RATE = front_end.RATE
HALF = front_end.WINDOW // 2
SILENT_SHARE = 0.05
SEVERAL_SHARE = 0.75
MOST_NEIGHBOURS = 5
# Share of windows that begin in the middle of a recording, with earlier text as context.
LATER_SHARE = 0.6
# Number of windows before the preceding one: a long recording has several, which fill whisper-cli's text context.
EARLIER_WINDOWS = (0, 0, 1, 2, 4)
SENTENCES_OF_A_WINDOW = 2
# Share of windows after the last word, for which nothing must be written.
AFTER_SHARE = 0.06
# whisper-cli clears the text context when at most this many seconds of the recording remain.
FORGETTING_SECONDS = 5.0
# whisper-cli skips shorter windows.
SHORTEST_SECONDS = 0.1
NO_TIMESTAMPS_SHARE = 0.1
# Words that end closer to the window's end may be cut off, so they belong to the next window.
CUT_MARGIN = 0.2
# Positions reserved for the end of the sequence.
SEQUENCE_RESERVE = 2
# A window that ends within speech is cut at a sentence end if there is one after this fraction of it.
LEAST_PART = 0.5
# For a timestamp, attention covers this many seconds on both sides.
MOMENT_SECONDS = 0.1
IGNORED = -100


@dataclasses.dataclass
class Window:
    """One training example. `samples` start with half an analysis window of padding; `heard` is the number of samples
    without padding; `louder` is by how many decades the rest of the recording is louder. `sequence` and `targets` are
    tokens, `spans` has one entry per token of `sequence` and one more; the labels have one entry per encoder step."""

    samples: numpy.ndarray
    heard: int
    louder: float
    sequence: list
    targets: list
    spans: list
    sound_labels: numpy.ndarray
    word_labels: numpy.ndarray


def _loudest(samples):
    """Maximum of the spectrum in decades of power."""
    padded = torch.from_numpy(numpy.pad(samples, HALF).astype(numpy.float32))
    return float(front_end.log_mel(padded[None], len(samples) // front_end.STEP).max())


class Composer:
    """Generates windows of one shape from a pool."""

    def __init__(self, pool, table, shape, random, generator):
        self._pool, self._table, self._shape = pool, table, shape
        self._random, self._generator = random, generator

    def window(self, steps):
        """A window with this many encoder steps."""
        while True:
            is_silent = self._random.random() < SILENT_SHARE
            made = self._silence(steps) if is_silent else self._speech(steps)
            if made and len(made.sequence) < self._shape.text_context - SEQUENCE_RESERVE:
                return made

    def _seconds(self, steps):
        return steps * 2 / front_end.FRAMES_PER_SECOND

    def _padded(self, sound, begin, steps):
        """The window's samples from `begin`, and how many of them are not padding."""
        samples = numpy.zeros(int(self._seconds(steps) * RATE) + front_end.WINDOW, numpy.float32)
        piece = sound[begin:begin + len(samples) - HALF]
        samples[HALF:HALF + len(piece)] = piece
        samples[:HALF] = sound[begin - HALF:begin] if begin >= HALF else samples[HALF + 1:2 * HALF + 1][::-1]
        return samples, len(piece)

    def _silence(self, steps):
        random = self._random
        seconds = random.uniform(0.3, self._seconds(steps))
        count = int(seconds * RATE) + front_end.WINDOW
        sound = numpy.zeros(count, numpy.float32)
        if random.random() < 0.6:
            sound = scenes.noise(count, random, self._generator) * scenes.decibels(random.uniform(-90, -35))
        elif random.random() < 0.3:
            sound = self._generator.integers(-1, 2, count).astype(numpy.float32) / 32768
        items = [(token, None) for token in grammar.tokens(grammar.SILENCE)]
        scene = scenes.Scene(random.choice(grammar.LANGUAGES), items, [], sound)
        end = min(seconds, self._seconds(steps) - CUT_MARGIN)
        return self._example(scene, steps, (0.0, end, False), [])

    def _scene(self, steps):
        """A window's scene, and whether it contains more than one utterance."""
        random = self._random
        first = self._pool.draw(random)
        is_whole = steps == self._shape.audio_context
        chosen = [first]
        if is_whole and random.random() < SEVERAL_SHARE:
            chosen += [self._pool.neighbour(first, random) for _ in range(random.randint(1, MOST_NEIGHBOURS))]
        if random.random() < 0.45:
            factor = random.uniform(0.92, 1.08)
            chosen = [scenes.faster(one, factor) for one in chosen]
        if len(chosen) == 1:
            chosen = [scenes.fitting(chosen[0], self._seconds(steps) - 1.0, random)]
        return scenes.joined(chosen, random), len(chosen) > 1

    def _speech(self, steps):
        random = self._random
        scene, has_several = self._scene(steps)
        is_after = steps == self._shape.audio_context and random.random() < AFTER_SHARE
        if is_after:
            scene.append_silence(random.uniform(2 * SHORTEST_SECONDS, 4))
        scene.samples = scenes.recorded(scene.samples, random, self._generator)
        if is_after:
            return self._after(scene, steps)
        previous = []
        begin = 0.0
        if has_several and random.random() < LATER_SHARE:
            begin, previous = self._later(scene)
        length = self._seconds(steps)
        is_cut = scene.end - begin > length - 0.12
        if is_cut and not scene.cut(begin + LEAST_PART * length, begin + length - CUT_MARGIN):
            return None
        return self._example(scene, steps, (begin, scene.end - begin, is_cut), previous)

    def _after(self, scene, steps):
        """A window after the last word, where the sentence for silence must not be written."""
        begin = self._random.uniform(scene.end - 0.05, max(scene.end, scene.seconds - SHORTEST_SECONDS))
        previous = self._remembered(scene, scene.items, begin)
        scene.items = []
        return self._example(scene, steps, (round(begin, 2), 0.0, False), previous)

    def _later(self, scene):
        """Drops the first words, as in a window that follows another; their text becomes the context."""
        random = self._random
        place = self._later_place(scene.items)
        written_end = [span for _, span in scene.items[:place] if span][-1][1]
        latest = scene.items[place][1][0] + 0.02
        if random.random() < 0.35:
            begin = random.uniform(min(latest, written_end) - 0.08, latest)
        else:
            begin = min(latest, round(written_end, 1) + random.uniform(-0.08, 0.1))
        begin = max(0.0, round(begin, 2))
        previous = self._remembered(scene, scene.items[:place], begin)
        scene.items = scene.items[place:]
        return begin, previous

    def _later_place(self, items):
        """Where a following window starts: mostly at the start of a sentence, else at any word but the first."""
        words = [place for place, (_, span) in enumerate(items) if span][1:]
        firsts = [place for place in words if items[place - 1][0] in scenes.SENTENCE_ENDS]
        return self._random.choice(firsts if firsts and self._random.random() < 0.8 else words)

    def _remembered(self, scene, items, begin):
        """The context that whisper-cli passes to the window that begins there: the last tokens that fit, including
        timestamps."""
        if scene.seconds - begin <= FORGETTING_SECONDS:
            return []
        written = []
        for _ in range(self._random.choice(EARLIER_WINDOWS)):
            said = [self._pool.in_language(scene.language, self._random) for _ in range(SENTENCES_OF_A_WINDOW)]
            written += self._written([token for one in said for token in one.tokens])
        written += self._written([token for token, _ in items])
        return written[-(self._shape.text_context // 2 - 1):]

    def _written(self, text):
        """The context tokens of an earlier window."""
        table = self._table
        end = table.timestamp(self._random.uniform(LEAST_PART * self._shape.window_seconds, self._shape.window_seconds))
        return [tokens.FIRST_TIMESTAMP, *(table.number(token) for token in text), end, end]

    def _example(self, scene, steps, extent, previous):
        begin, end, is_cut = extent
        samples, heard = self._padded(scene.samples, int(begin * RATE), steps)
        is_whole = begin == 0 and len(scene.samples) <= heard
        louder = 0.0 if is_whole else max(0.0, _loudest(scene.samples) - _loudest(samples[HALF:HALF + heard]))
        items = [(token, span and (span[0] - begin, span[1] - begin)) for token, span in scene.items]
        sounds = [(name, seconds - begin) for name, seconds in scene.sounds]
        text = items[:scene.written]
        is_timed = not text or is_cut or self._random.random() >= NO_TIMESTAMPS_SHARE
        head = [tokens.PREVIOUS, *previous] if previous else []
        head += [tokens.START, tokens.LANGUAGE[scene.language], tokens.TRANSCRIBE]
        head += [] if is_timed else [tokens.NO_TIMESTAMPS]
        answer, spans = self._timed(text, end, is_cut) if is_timed else self._untimed(text)
        targets = [IGNORED] * (len(head) - 1) + answer
        if not previous:
            targets[0] = tokens.LANGUAGE[scene.language]
        return Window(samples, heard, louder, [*head, *answer[:-1]], targets, [None] * len(head) + spans,
                      self._sound_labels(sounds, steps), self._word_labels(items, steps, is_cut))

    def _untimed(self, text):
        """The tokens of the text including the end token, and the span of each."""
        return [*(self._table.number(token) for token, _ in text), tokens.END], [*(span for _, span in text), None]

    def _timed(self, text, end, is_cut):
        """The same with timestamps before and after."""
        written, spans = self._untimed(text)
        if not text:
            return [tokens.FIRST_TIMESTAMP, *written], [None, *spans]
        moment = max(self._table.timestamp(end), tokens.FIRST_TIMESTAMP + 5)
        around = (end - MOMENT_SECONDS, end + MOMENT_SECONDS)
        # Two equal timestamps mean that the next window begins there.
        moments, looks = ([moment, moment], [around, around]) if is_cut else ([moment, self._table.last_timestamp], [around, None])
        return [tokens.FIRST_TIMESTAMP, *written[:-1], *moments, tokens.END], [None, *spans[:-1], *looks, None]

    def _sound_labels(self, sounds, steps):
        labels = numpy.zeros(steps, numpy.int64)
        ordered = sorted(sounds, key=lambda sound: sound[1])
        for (name, begin), (_, end) in zip(ordered, ordered[1:]):
            kind = self._pool.sound_kinds.get(name, 0)
            labels[max(0, round(begin * 50)):max(0, round(end * 50))] = kind
        return labels

    def _word_labels(self, items, steps, is_cut):
        labels = numpy.zeros(steps, numpy.int64)
        heard = steps - int(CUT_MARGIN * 50) if is_cut else steps
        for token, span in items:
            if not span:
                continue
            first, last = max(0, int(span[0] * 50)), max(0, int(span[1] * 50))
            is_heard = last <= heard
            labels[first:last] = self._pool.word_kinds.get(token[1:].lower(), 0) if is_heard else IGNORED
        return labels
