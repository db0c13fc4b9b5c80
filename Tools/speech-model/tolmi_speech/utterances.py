"""Spoken sentences with word timings, generated once and stored for the training."""

import dataclasses
import os
import pathlib
import pickle
import random as random_module

import numpy
from scipy.signal import resample_poly

from . import front_end, grammar, variants
from .voices import Manner, synthesizer

ENGLISH_VOICES = ("en-us", "en", "en-gb-x-rp")
ROMANIAN_VOICES = ("ro",)
VOICES = {"en": ENGLISH_VOICES, "ro": ROMANIAN_VOICES}
# The plain voice is the one that people try first.
PLAIN_SHARE, RANDOM_SHARE = 0.15, 0.4
SEEN_VARIANTS = (
    "+m1", "+m2", "+m3", "+m4", "+m6", "+m7", "+f1", "+f2", "+f3", "+f5", "+Alex", "+Alicia", "+Andrea", "+Annie", "+Denis",
    "+Diogo", "+Gene", "+Gene2", "+Henrique", "+Hugo", "+Jacky", "+Lee", "+Marco", "+Mario", "+Michael", "+Mike", "+Nguyen",
    "+adam", "+anika", "+announcer", "+antonio", "+aunty", "+belinda", "+benjamin", "+boris", "+caleb", "+david", "+ed",
    "+edward", "+edward2", "+grandma", "+grandpa", "+gustave", "+iven", "+iven2", "+iven3", "+john", "+kaukovalta",
    "+marcelo", "+max", "+michel", "+miguel", "+norbert", "+pablo", "+paul", "+pedro", "+quincy", "+rob", "+robert",
    "+sandro", "+shelby", "+steph", "+steph2", "+steph3", "+travis", "+victor", "+zac")
# Never trained on: variants similar to trained ones, and the oddest.
UNSEEN_VARIANTS = ("+m5", "+f4", "+m8")
ODD_VARIANTS = ("+linda", "+Andy")

RATES = (125, 195)
PITCHES = (28, 72)
# After the last word espeak-ng produces only breath noise.
TAIL_SECONDS = 0.12
SENTENCES_WITH_ONE_VOICE = 3
SHORTEST_SAMPLES = 2000


@dataclasses.dataclass
class Utterance:
    """Samples are 16-bit at the front end's rate; `spans` hold the seconds of each token, None for marks; `sounds` are
    (name, seconds)."""

    language: str
    voice: str
    text: str
    tokens: list
    spans: list
    sounds: list
    samples: numpy.ndarray

    @property
    def end(self):
        """Seconds at which the last word ends."""
        return [span for span in self.spans if span][-1][1]


def resampled(samples, rate, random):
    """Resamples to the front end's rate in one of the ways that real programs use."""
    sound = samples.astype(numpy.float32) / 32768
    if random.random() < 0.6:
        return resample_poly(sound, front_end.RATE // 50, rate // 50).astype(numpy.float32)
    at_48k = resample_poly(sound, 48000 // 150, rate // 150)
    if random.random() < 0.5:
        return resample_poly(at_48k, 1, 3).astype(numpy.float32)
    if random.random() < 0.5:
        at_48k = numpy.convolve(at_48k, numpy.ones(3) / 3, "same")
    places = numpy.arange(len(at_48k) // 3) * 3
    return at_48k[places].astype(numpy.float32)


def _starts(marks, words, matches):
    """Seconds at which each word begins; words that espeak-ng does not report share the time until the next."""
    starts = [None] * len(words)
    for character, seconds in marks:
        for place, word in enumerate(words):
            if matches[word].start() <= character < matches[word].end() and starts[place] is None:
                starts[place] = seconds
    return starts


def _fill_gaps(starts, end):
    starts[0] = starts[0] or 0.0
    place = 1
    while place < len(starts):
        if starts[place] is None:
            known = next((later for later in range(place, len(starts)) if starts[later] is not None), len(starts))
            until = starts[known] if known < len(starts) else end
            begin = starts[place - 1]
            for step, gap in enumerate(range(place, known), 1):
                starts[gap] = begin + (until - begin) * step / (known - place + 1)
            place = known
        place += 1


def _spans(text, speech, duration):
    """The time span of every token of the text, without pauses."""
    matches = list(grammar.TOKEN.finditer(text))
    words = [place for place, match in enumerate(matches) if match[0] not in grammar.PUNCTUATION]
    starts = _starts(speech.words, words, matches)
    _fill_gaps(starts, duration)
    pauses = [seconds for name, seconds in speech.sounds if name.startswith("_")]
    spans = [None] * len(matches)
    for place, word in enumerate(words):
        begin = starts[place]
        end = starts[place + 1] if place + 1 < len(words) else duration
        end = next((pause for pause in pauses if begin + 0.03 < pause < end), end)
        spans[word] = (begin, max(end, begin + 0.04))
    return spans


def spoken(voice, text, language, manner, random):
    """The utterance, or None if it is practically silent."""
    speech = voice.say(text, manner)
    if len(speech.samples) < SHORTEST_SAMPLES:
        return None
    duration = len(speech.samples) / voice.rate
    made = Utterance(language, manner.voice, text, grammar.tokens(text), _spans(text, speech, duration), speech.sounds, None)
    sound = resampled(speech.samples, voice.rate, random)
    sound = sound[:int((made.end + TAIL_SECONDS) * front_end.RATE)]
    fade = min(front_end.RATE // 100, len(sound))
    sound[len(sound) - fade:] *= numpy.linspace(1, 0, fade)
    made.samples = (numpy.clip(sound, -1, 1) * 32767).astype(numpy.int16)
    return made


def _any_variant(random):
    kind = random.random()
    if kind < PLAIN_SHARE:
        return ""
    return random.choice(variants.names() if kind < PLAIN_SHARE + RANDOM_SHARE else SEEN_VARIANTS)


def any_manner(language, random):
    voice = random.choice(VOICES[language]) + _any_variant(random)
    return Manner(voice, random.randint(*RATES), random.randint(*PITCHES), random.randint(*PITCHES))


def make_shard(data, seed, count):
    """`count` utterances, reproducible for a seed, with the voices of an espeak-ng data folder."""
    random = random_module.Random(seed)
    voice = synthesizer(data)
    grammars = grammar.grammars()
    made = []
    while len(made) < count:
        language = random.choice(grammar.LANGUAGES)
        manner = any_manner(language, random)
        # Several sentences with one voice, so that a window can contain more than one.
        for _ in range(SENTENCES_WITH_ONE_VOICE):
            one = spoken(voice, grammars[language].training_sentence(random), language, manner, random)
            if one:
                made.append(one)
    return made[:count]


def keep_shard(folder, data, seed, count):
    """Generates a shard if it does not exist."""
    path = pathlib.Path(folder) / f"utterances-{seed:05d}-{count}.pickle"
    if path.exists():
        return path
    path.parent.mkdir(parents=True, exist_ok=True)
    fresh = path.with_suffix(f".{os.getpid()}")
    with open(fresh, "wb") as file:
        pickle.dump(make_shard(data, seed, count), file, pickle.HIGHEST_PROTOCOL)
    fresh.rename(path)
    return path


def load_shard(path):
    with open(path, "rb") as file:
        return pickle.load(file)
