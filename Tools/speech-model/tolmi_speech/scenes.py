"""Scenes: sequences of utterances as recorded by a microphone."""

import dataclasses

import numpy

from . import front_end

RATE = front_end.RATE
# Share of neighbours that begin with the same word: they teach the network not to jump between similar passages.
ALIKE_SHARE = 0.3
SENTENCE_ENDS = ".?!"


@dataclasses.dataclass
class Scene:
    """A piece of sound: tokens with their spans, sounds as (name, seconds), and the samples. The first `written` tokens
    (None for all) belong to the window."""

    language: str
    items: list
    sounds: list
    samples: numpy.ndarray
    written: int = None

    @property
    def seconds(self):
        return len(self.samples) / RATE

    @property
    def text(self):
        """The tokens to write, with their spans."""
        return self.items[:self.written]

    @property
    def end(self):
        """Seconds at which the last written word ends."""
        return [span for _, span in self.text if span][-1][1]

    def append_silence(self, seconds):
        self.samples = numpy.append(self.samples, numpy.zeros(int(seconds * RATE), numpy.float32))

    def cut(self, least, most):
        """Leaves the rest to the next window: everything after the last sentence that ends between `least` and `most`, else
        after the last word (with its punctuation) before `most`. Returns whether any word remains."""
        keep = sentence = 0
        end = 0.0
        for place, (token, span) in enumerate(self.items, 1):
            if span and span[1] > most:
                break
            end = span[1] if span else end
            keep = place
            if token in SENTENCE_ENDS and end >= least:
                sentence = place
        self.written = sentence or keep
        return any(span for _, span in self.text)


class Pool:
    """Utterances to draw from, and the sounds and words in them."""

    def __init__(self, utterances, grammars):
        self.utterances = utterances
        self._by_language, self._by_voice, self._by_first_word = {}, {}, {}
        for one in utterances:
            self._by_language.setdefault(one.language, []).append(one)
            self._by_voice.setdefault((one.language, one.voice), []).append(one)
            self._by_first_word.setdefault((one.language, one.voice, one.tokens[0]), []).append(one)
        names = sorted({name for one in utterances for name, _ in one.sounds if name and not name.startswith("_")})
        self.sound_kinds = {name: kind for kind, name in enumerate(names, 1)}
        words = sorted({word.lower() for one in grammars.values() for word in one.words})
        self.word_kinds = {word: kind for kind, word in enumerate(words, 1)}

    def draw(self, random):
        return random.choice(self.utterances)

    def in_language(self, language, random):
        """A random utterance."""
        return random.choice(self._by_language[language])

    def neighbour(self, of, random):
        """An utterance with the same voice, often with the same first word."""
        if random.random() < ALIKE_SHARE:
            return random.choice(self._by_first_word[(of.language, of.voice, of.tokens[0])])
        return random.choice(self._by_voice[(of.language, of.voice)])


def noise(count, random, generator):
    """White, low-pass filtered or rumbling noise of about unit level, sometimes with mains hum."""
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


def decibels(value):
    return 10 ** (value / 20)


def faster(utterance, factor):
    """The utterance with speed and pitch raised by a factor."""
    count = int(len(utterance.samples) / factor)
    samples = numpy.interp(numpy.arange(count) * factor, numpy.arange(len(utterance.samples)), utterance.samples)
    spans = [span and (span[0] / factor, span[1] / factor) for span in utterance.spans]
    sounds = [(name, seconds / factor) for name, seconds in utterance.sounds]
    return dataclasses.replace(utterance, spans=spans, sounds=sounds, samples=samples.astype(numpy.float32))


def _part(utterance, first, last):
    """The utterance cut to a range of words."""
    spans = utterance.spans[first:last]
    timed = [span for span in spans if span]
    begin, end = timed[0][0] if first else 0.0, timed[-1][1]
    is_end = last == len(utterance.tokens)
    samples = utterance.samples[int(begin * RATE):len(utterance.samples) if is_end else int(end * RATE)]
    moved = [span and (span[0] - begin, span[1] - begin) for span in spans]
    sounds = [(name, seconds - begin) for name, seconds in utterance.sounds if begin <= seconds < end]
    return dataclasses.replace(
        utterance, tokens=utterance.tokens[first:last], spans=moved, sounds=sounds, samples=samples)


def fitting(utterance, seconds, random):
    """The utterance or a run of its words that ends within the given seconds."""
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


def joined(utterances, random):
    """Concatenates utterances with pauses."""
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


def recorded(sound, random, generator):
    """Simulates a microphone: random level and noise, with or without 16-bit quantization."""
    sound = sound * decibels(random.uniform(-28, 4))
    if random.random() < 0.6:
        level = numpy.sqrt(numpy.mean(sound ** 2)) + 1e-6
        sound = sound + noise(len(sound), random, generator) * decibels(random.uniform(-55, -12)) * level
    sound = numpy.clip(sound, -1, 1)
    return numpy.round(sound * 32767) / 32768 if random.random() < 0.5 else sound
