"""Puts utterances into windows as whisper-cli meets them, with noise, silence and neighbours, and says what the network
should make of each."""

import dataclasses

import numpy
import torch

from . import front_end, grammar, tokens

RATE = front_end.RATE
HALF = front_end.WINDOW // 2
SILENT_SHARE = 0.05
SEVERAL_SHARE = 0.75
MOST_NEIGHBOURS = 5
# Windows that begin in the middle of a recording, with what was written before in mind.
LATER_SHARE = 0.6
# Windows behind the last word, of which nothing is to be written.
AFTER_SHARE = 0.06
NO_TIMESTAMPS_SHARE = 0.2
# What ends nearer to the window's end than this may be cut, so it belongs to the next window.
CUT_MARGIN = 0.2
# Positions that are left for the end of the sequence.
SEQUENCE_RESERVE = 2
IGNORED = -100


@dataclasses.dataclass
class Scene:
    """A stretch of sound: tokens with their spans, sounds as (name, seconds), and the samples."""

    language: str
    items: list
    sounds: list
    samples: numpy.ndarray


@dataclasses.dataclass
class Window:
    """One example. `samples` have half a spectrum's window in front; `heard` counts those that are not padding; `louder`
    is by how many decades the rest of the recording is louder. `sequence` and `targets` are token numbers, `spans` one
    for each of `sequence` and one more; the labels are one for each step of the encoder."""

    samples: numpy.ndarray
    heard: int
    louder: float
    sequence: list
    targets: list
    spans: list
    sound_labels: numpy.ndarray
    word_labels: numpy.ndarray


class Pool:
    """Utterances to draw from, and the kinds of sounds and words in them."""

    def __init__(self, utterances, grammars):
        self.utterances = utterances
        self._by_voice = {}
        for one in utterances:
            self._by_voice.setdefault((one.language, one.voice), []).append(one)
        names = sorted({name for one in utterances for name, _ in one.sounds if name and not name.startswith("_")})
        self.sound_kinds = {name: kind for kind, name in enumerate(names, 1)}
        words = sorted({word.lower() for one in grammars.values() for word in one.words})
        self.word_kinds = {word: kind for kind, word in enumerate(words, 1)}

    def draw(self, random):
        return random.choice(self.utterances)

    def neighbour(self, of, random):
        """Another utterance with the same voice."""
        return random.choice(self._by_voice[(of.language, of.voice)])


def noise(count, random, generator):
    """White, dull or rumbling noise of about one, sometimes with the hum of the mains."""
    sound = generator.standard_normal(count).astype(numpy.float32)
    kind = random.random()
    if kind < 0.4:
        sound = numpy.convolve(sound, numpy.ones(4, numpy.float32) / 2, "same")
    elif kind < 0.6:
        sound = numpy.cumsum(sound)
        sound -= numpy.convolve(sound, numpy.ones(800) / 800, "same")
        sound /= sound.std() + 1e-9
    if random.random() < 0.15:
        sound = sound + 2 * numpy.sin(2 * numpy.pi * random.choice([50, 60, 100, 120]) * numpy.arange(count) / RATE)
    return sound.astype(numpy.float32)


def _decibels(value):
    return 10 ** (value / 20)


def _faster(utterance, factor):
    """Said faster by a factor, and as much higher."""
    count = int(len(utterance.samples) / factor)
    samples = numpy.interp(numpy.arange(count) * factor, numpy.arange(len(utterance.samples)), utterance.samples)
    spans = [span and (span[0] / factor, span[1] / factor) for span in utterance.spans]
    sounds = [(name, seconds / factor) for name, seconds in utterance.sounds]
    return dataclasses.replace(utterance, spans=spans, sounds=sounds, samples=samples.astype(numpy.float32))


def _part(utterance, first, last):
    """The words from one place to another, the sound cut to them."""
    spans = utterance.spans[first:last]
    timed = [span for span in spans if span]
    begin, end = timed[0][0] if first else 0.0, timed[-1][1]
    is_end = last == len(utterance.tokens)
    samples = utterance.samples[int(begin * RATE):len(utterance.samples) if is_end else int(end * RATE)]
    moved = [span and (span[0] - begin, span[1] - begin) for span in spans]
    sounds = [(name, seconds - begin) for name, seconds in utterance.sounds if begin <= seconds < end]
    return dataclasses.replace(
        utterance, tokens=utterance.tokens[first:last], spans=moved, sounds=sounds, samples=samples)


def _fitting(utterance, seconds, random):
    """The utterance or a run of its words, so that it ends before so many seconds."""
    words = [place for place, span in enumerate(utterance.spans) if span]
    if utterance.end <= seconds and random.random() > 0.15:
        return utterance
    first = random.randrange(len(words))
    last = first
    begin = utterance.spans[words[first]][0] if first else 0.0
    while last + 1 < len(words) and utterance.spans[words[last + 1]][1] - begin <= seconds:
        last += 1
    if last + 1 < len(words) and random.random() < 0.3:
        last = random.randint(first, last)
    until = len(utterance.tokens) if last + 1 == len(words) else words[last] + 1
    return _part(utterance, words[first] if first else 0, until)


def _joined(utterances, random):
    """One after the other with pauses between them."""
    moment = random.choice([0.0, random.uniform(0, 0.8), random.uniform(0, 0.8)])
    items, sounds, pieces = [], [], []
    for one in utterances:
        pieces.append((moment, one.samples))
        items += [(token, span and (span[0] + moment, span[1] + moment))
                  for token, span in zip(one.tokens, one.spans)]
        sounds += [(name, seconds + moment) for name, seconds in one.sounds if seconds < one.end]
        sounds.append(("_:", one.end + moment))
        moment += one.end + random.uniform(0.12, 0.9 if random.random() < 0.8 else 3.0)
    tail = random.choice([0, random.uniform(0, 1.5), random.uniform(0, 0.4)])
    length = max(int(begin * RATE) + len(samples) for begin, samples in pieces) + int(tail * RATE)
    sound = numpy.zeros(length, numpy.float32)
    for begin, samples in pieces:
        place = int(begin * RATE)
        sound[place:place + len(samples)] += samples.astype(numpy.float32) / 32768
    return Scene(utterances[0].language, items, sounds, sound)


def _recorded(sound, random, generator):
    """As a microphone gives it: louder or softer, with noise, in steps of 16 bits or not."""
    sound = sound * _decibels(random.uniform(-28, 4))
    if random.random() < 0.6:
        level = numpy.sqrt(numpy.mean(sound ** 2)) + 1e-6
        sound = sound + noise(len(sound), random, generator) * _decibels(random.uniform(-55, -12)) * level
    sound = numpy.clip(sound, -1, 1)
    return numpy.round(sound * 32767) / 32768 if random.random() < 0.5 else sound


class Composer:
    """Makes windows of one shape, drawing from a pool."""

    def __init__(self, pool, table, shape, random, generator):
        self._pool, self._table, self._shape = pool, table, shape
        self._random, self._generator = random, generator

    def window(self, steps):
        """A window of so many encoder steps."""
        while True:
            is_silent = self._random.random() < SILENT_SHARE
            made = self._silence(steps) if is_silent else self._speech(steps)
            if made and len(made.sequence) < self._shape.text_context - SEQUENCE_RESERVE:
                return made

    def _seconds(self, steps):
        return steps * 2 / front_end.FRAMES_PER_SECOND

    def _padded(self, sound, begin, steps):
        """The window's samples from `begin` on, and how many of them are heard."""
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
            sound = noise(count, random, self._generator) * _decibels(random.uniform(-90, -35))
        elif random.random() < 0.3:
            sound = self._generator.integers(-1, 2, count).astype(numpy.float32) / 32768
        items = [(token, None) for token in grammar.tokens(grammar.SILENCE)]
        scene = Scene(random.choice(grammar.LANGUAGES), items, [], sound)
        end = min(seconds, self._seconds(steps) - CUT_MARGIN)
        return self._example(scene, steps, (0.0, end, False), [])

    def _scene(self, steps):
        """The sound that a window looks at, and whether it holds more than one utterance."""
        random = self._random
        first = self._pool.draw(random)
        is_whole = steps == self._shape.audio_context
        chosen = [first]
        if is_whole and random.random() < SEVERAL_SHARE:
            chosen += [self._pool.neighbour(first, random) for _ in range(random.randint(1, MOST_NEIGHBOURS))]
        if random.random() < 0.45:
            factor = random.uniform(0.92, 1.08)
            chosen = [_faster(one, factor) for one in chosen]
        if len(chosen) == 1:
            chosen = [_fitting(first if is_whole else chosen[0], self._seconds(steps) - 1.0, random)]
        return _joined(chosen, random), len(chosen) > 1

    def _speech(self, steps):
        random = self._random
        scene, has_several = self._scene(steps)
        is_after = steps == self._shape.audio_context and random.random() < AFTER_SHARE
        if is_after:
            scene.samples = numpy.append(scene.samples, numpy.zeros(int(random.uniform(1, 4) * RATE), numpy.float32))
        scene.samples = _recorded(scene.samples, random, self._generator)
        if is_after:
            return self._after(scene, steps)
        previous = []
        begin = 0.0
        if has_several and random.random() < LATER_SHARE:
            begin, previous = self._later(scene)
        length = self._seconds(steps)
        timed = [span for _, span in scene.items if span]
        is_cut = timed[-1][1] - begin > length - 0.12
        if is_cut and not self._cut(scene, begin + length - CUT_MARGIN):
            return None
        end = [span for _, span in scene.items if span][-1][1] - begin
        return self._example(scene, steps, (begin, end, is_cut), previous)

    def _after(self, scene, steps):
        """The window behind the last word: the sentence of silence would be one too many there."""
        previous = self._written(scene.items)
        end = [span for _, span in scene.items if span][-1][1]
        scene.items = []
        begin = max(0.0, round(end + self._random.uniform(-0.05, 0.2), 2))
        return self._example(scene, steps, (begin, 0.0, False), previous)

    def _later(self, scene):
        """Drops the first words, as the window that follows another one does; what was written of them goes before."""
        random = self._random
        words = [place for place, (_, span) in enumerate(scene.items) if span]
        place = words[random.randint(1, len(words) - 2)] if len(words) > 3 else words[0]
        next_begin = scene.items[place][1][0]
        before = [span for _, span in scene.items[:place] if span]
        written_end = round(before[-1][1], 1) if before else 0.0
        if random.random() < 0.35:
            begin = next_begin - random.uniform(-0.03, 0.08)
        else:
            begin = min(next_begin + 0.02, written_end + random.uniform(-0.08, 0.1))
        previous = []
        if random.random() < 0.7:
            previous = self._written(scene.items[:place])
        scene.items = scene.items[place:]
        return max(0.0, round(begin * 100) / 100), previous

    def _written(self, items):
        """What whisper-cli hands on of its own text: the last tokens that fit, the moments among them."""
        table = self._table
        text = [table.number(token) for token, _ in items]
        end = table.timestamp(self._random.uniform(5, self._shape.window_seconds))
        whole = [tokens.FIRST_TIMESTAMP, *text, end, end]
        return whole[-(self._shape.text_context // 2 - 1):]

    def _cut(self, scene, seconds):
        """Keeps the words that end in time, with the mark that follows the last of them; whether there are any."""
        keep = 0
        for place, (_, span) in enumerate(scene.items):
            if span is None:
                keep = place + 1 if keep == place else keep
            elif span[1] <= seconds:
                keep = place + 1
            else:
                break
        scene.items = scene.items[:keep]
        return any(span for _, span in scene.items)

    def _example(self, scene, steps, extent, previous):
        begin, end, is_cut = extent
        random, table = self._random, self._table
        samples, heard = self._padded(scene.samples, int(begin * RATE), steps)
        rest = len(scene.samples) - int(begin * RATE) - heard
        louder = random.uniform(0, 0.3) if begin > 0 or rest > RATE // 20 else 0.0
        items = [(token, span and (span[0] - begin, span[1] - begin)) for token, span in scene.items]
        sounds = [(name, seconds - begin) for name, seconds in scene.sounds]
        head = [tokens.PREVIOUS, *previous] if previous else []
        head += [tokens.START, tokens.LANGUAGE[scene.language], tokens.TRANSCRIBE]
        body = [table.number(token) for token, _ in items]
        spans = [span for _, span in items]
        if not body:
            sequence = [*head, tokens.FIRST_TIMESTAMP, tokens.END]
            places = [None] * len(sequence)
            head_length = len(head)
        elif random.random() < NO_TIMESTAMPS_SHARE:
            sequence = [*head, tokens.NO_TIMESTAMPS, *body, tokens.END]
            places = [None] * (len(head) + 1) + spans + [None]
            head_length = len(head) + 1
        else:
            moment = max(table.timestamp(end), tokens.FIRST_TIMESTAMP + 5)
            # Two equal moments tell that the next window begins there.
            ends = [moment, moment] if is_cut else [moment, table.last_timestamp]
            sequence = [*head, tokens.FIRST_TIMESTAMP, *body, *ends, tokens.END]
            places = [None] * (len(head) + 1) + spans + [None] * 3
            head_length = len(head)
        targets = [IGNORED] * (head_length - 1) + sequence[head_length:]
        if not previous:
            targets[0] = tokens.LANGUAGE[scene.language]
        sound_labels = self._sound_labels(sounds, steps)
        word_labels = self._word_labels(items, steps, end if is_cut else None)
        return Window(samples, heard, louder, sequence[:-1], targets, places, sound_labels, word_labels)

    def _sound_labels(self, sounds, steps):
        labels = numpy.zeros(steps, numpy.int64)
        ordered = sorted(sounds, key=lambda sound: sound[1])
        for (name, begin), (_, end) in zip(ordered, ordered[1:]):
            kind = self._pool.sound_kinds.get(name, 0)
            labels[max(0, round(begin * 50)):max(0, round(end * 50))] = kind
        return labels

    def _word_labels(self, items, steps, cut_at):
        labels = numpy.zeros(steps, numpy.int64)
        for token, span in items:
            if span:
                kind = self._pool.word_kinds.get(token[1:].lower(), 0)
                labels[max(0, int(span[0] * 50)):max(0, int(span[1] * 50))] = kind
        if cut_at is not None:
            labels[int(cut_at * 50) + 1:] = IGNORED
        return labels


@dataclasses.dataclass
class Batch:
    """Windows of one length side by side. `here` and `ahead` mark, for each place of the sequence, the encoder steps of
    the token that stands there and of the one that follows."""

    mel: torch.Tensor
    rows: torch.Tensor
    targets: torch.Tensor
    here: torch.Tensor
    ahead: torch.Tensor
    sound_labels: torch.Tensor
    word_labels: torch.Tensor

    def to(self, device):
        return Batch(*(getattr(self, field.name).to(device) for field in dataclasses.fields(self)))


def _mel(windows, steps, generator):
    frames = steps * 2
    mel = front_end.log_mel(torch.from_numpy(numpy.stack([one.samples for one in windows])), frames)
    # Microphones favour high or low sounds.
    tilts = torch.from_numpy(generator.uniform(-0.5, 0.5, len(windows)) * (generator.random(len(windows)) < 0.4)).float()
    mel = mel + tilts[:, None, None] * ((torch.arange(front_end.BANDS).float() - 40) / 40)[None, None]
    heard = torch.tensor([min(frames, (one.heard + HALF) // front_end.STEP + 1) for one in windows])
    mel[torch.arange(frames)[None] >= heard[:, None]] = torch.log10(torch.tensor(front_end.FLOOR))
    loudest = mel.amax((1, 2)) + torch.tensor([one.louder for one in windows], dtype=torch.float32)
    return front_end.scaled(mel, loudest[:, None, None])


def _mark(marks, span):
    if span:
        marks[max(0, int(span[0] * 50) - 2):max(0, int(span[1] * 50) + 2)] = 1


def batch(windows, table, generator):
    """Puts windows of equal length together."""
    steps = len(windows[0].sound_labels)
    length = max(len(one.sequence) for one in windows)
    rows = torch.zeros(len(windows), length, dtype=torch.long)
    targets = torch.full((len(windows), length), IGNORED)
    here, ahead = torch.zeros(len(windows), length, steps), torch.zeros(len(windows), length, steps)
    for place, one in enumerate(windows):
        count = len(one.sequence)
        rows[place, :count] = torch.tensor([table.row[number] for number in one.sequence])
        targets[place, :count] = torch.tensor([table.row[number] if number >= 0 else IGNORED for number in one.targets])
        for step in range(count):
            _mark(here[place, step], one.spans[step])
            _mark(ahead[place, step], one.spans[step + 1])
    return Batch(_mel(windows, steps, generator), rows, targets, here, ahead,
                 torch.from_numpy(numpy.stack([one.sound_labels for one in windows])),
                 torch.from_numpy(numpy.stack([one.word_labels for one in windows])))
