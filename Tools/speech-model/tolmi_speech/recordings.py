"""Recordings of held-out sentences, generated with the commands espeak-ng and sox, independently of the training."""

import dataclasses
import pathlib
import random as random_module
import subprocess
import wave

import numpy

from . import front_end, grammar, utterances

# Signal to noise in decibels; None adds no noise.
NOISES = {"clean": None, "noisy": 20, "loud noise": 10}
GROUPS = ("plain", "seen", "unseen", "odd")
VARIANTS = {
    "plain": ("",),
    "seen": utterances.SEEN_VARIANTS,
    "unseen": utterances.UNSEEN_VARIANTS,
    "odd": utterances.ODD_VARIANTS,
}
PLAIN_VOICES = {"en": ("en-us", "en-gb"), "ro": ("ro",)}


@dataclasses.dataclass(frozen=True)
class Length:
    """Dictations of several sentences: minimum and maximum seconds and number of sentences to draw."""

    group: str
    seconds: tuple
    sentences: tuple


LONG = Length("long", (10, 20), (3, 6))
LONGEST = Length("longest", (30, 60), (10, 20))


@dataclasses.dataclass(frozen=True)
class Recording:
    """A sound file and its transcript."""

    path: str
    language: str
    group: str
    voice: str
    text: str
    seconds: float


def _say(text, voice, rate, pitch, path):
    spoken = path.with_suffix(".spoken.wav")
    subprocess.run(["espeak-ng", "-v", voice, "-s", str(rate), "-p", str(pitch), "-w", str(spoken), text], check=True)
    subprocess.run(["sox", "-D", str(spoken), "-r", str(front_end.RATE), "-c", "1", "-b", "16", str(path), "gain", "-3",
                    "pad", "0.2", "0.4"], check=True, stderr=subprocess.DEVNULL)
    spoken.unlink()


def seconds_of(path):
    return (path.stat().st_size - 44) / 2 / front_end.RATE


class Maker:
    """Creates recordings in a folder, reproducibly for a seed."""

    def __init__(self, folder, seed):
        self._folder = pathlib.Path(folder)
        self._folder.mkdir(parents=True, exist_ok=True)
        self._seed = seed
        self._random = random_module.Random(seed)
        self._grammars = grammar.grammars()
        self._used = set()

    def _sentence(self, language):
        while True:
            text = self._grammars[language].pattern_sentence(self._random, True)
            if 3 <= len(text.split()) <= 14 and text not in self._used:
                self._used.add(text)
                return text

    def _record(self, name, language, group, text):
        random = self._random
        voice = random.choice(PLAIN_VOICES[language]) + random.choice(VARIANTS[group])
        rate, pitch = (160, 50) if group == "plain" else (random.randint(135, 185), random.randint(35, 65))
        path = self._folder / f"{name}.wav"
        if not path.exists():
            _say(text, voice, rate, pitch, path)
        return Recording(str(path), language, group, voice, text, seconds_of(path))

    def short(self, count):
        """`count` recordings of each language and group, one sentence each."""
        return [self._record(f"{language}-{group}-{place:03d}", language, group, self._sentence(language))
                for language in grammar.LANGUAGES for group in GROUPS for place in range(count)]

    def several(self, count, length):
        """`count` recordings of each language, of several sentences, with the given length."""
        least, most = length.seconds
        made = []
        for language in grammar.LANGUAGES:
            kept = place = 0
            while kept < count:
                text = " ".join(self._sentence(language) for _ in range(self._random.randint(*length.sentences)))
                name = f"{language}-{length.group}-{place:03d}"
                one = self._record(name, language, self._random.choice(("plain", "seen")), text)
                place += 1
                if least <= one.seconds <= most:
                    made.append(dataclasses.replace(one, group=length.group))
                    kept += 1
        return made

    def with_noise(self, recording, decibels):
        """The recording with white noise at this signal-to-noise ratio, saved beside the original; None adds none."""
        if decibels is None:
            return recording
        path = pathlib.Path(recording.path)
        noisy = path.with_name(f"{path.stem}-{decibels}dB.wav")
        if not noisy.exists():
            samples = read(path)
            level = numpy.sqrt(numpy.mean(samples ** 2)) * 10 ** (-decibels / 20)
            generator = numpy.random.default_rng([self._seed, *path.stem.encode()])
            write(noisy, samples + level * generator.standard_normal(len(samples)).astype(numpy.float32))
        return dataclasses.replace(recording, path=str(noisy))

    def silences(self):
        """Recordings without speech, digital silence and faint noise, of several lengths."""
        generator = numpy.random.default_rng(self._seed)
        made = []
        for seconds in (1, 2, 4, 8):
            for level in (0.0, 0.0001, 0.001):
                path = self._folder / f"silence-{seconds}-{level}.wav"
                write(path, level * generator.standard_normal(seconds * front_end.RATE))
                made.append(Recording(str(path), "en", "silence", "", grammar.SILENCE, seconds))
        return made


def read(path):
    """The samples of a 16-bit file as floats from -1 to 1."""
    with wave.open(str(path), "rb") as file:
        return numpy.frombuffer(file.readframes(file.getnframes()), numpy.int16).astype(numpy.float32) / 32768


def write(path, samples):
    """Writes floats from -1 to 1 as 16-bit samples at the front end's rate."""
    with wave.open(str(path), "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(front_end.RATE)
        file.writeframes((numpy.clip(samples, -1, 1) * 32767).astype(numpy.int16).tobytes())
