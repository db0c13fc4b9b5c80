"""Word error rates of a model through the real whisper-cli, as a table."""

import concurrent.futures
import dataclasses
import os
import pathlib
import re
import subprocess
import tempfile

from . import grammar, recordings

# The program's flags for the two passes.
PASSES = {"first pass": ("-bo", "2", "-bs", "2", "-tp", "0"), "second pass": ("-bo", "5", "-bs", "5", "-tp", "0")}
PLAIN = "plain flags"
FLAGS = {**PASSES, PLAIN: ()}
WORD = re.compile(r"[\w'-]+")
DETECTED = re.compile(r"auto-detected language: (\w+)")


def words(text):
    """The words that are compared, in lower case."""
    return WORD.findall(text.lower())


def distance(said, heard):
    """The number of inserted, deleted and substituted words."""
    previous = list(range(len(heard) + 1))
    for place, word in enumerate(said, 1):
        current = [place]
        for other, candidate in enumerate(heard, 1):
            current.append(min(previous[other] + 1, current[-1] + 1, previous[other - 1] + (word != candidate)))
        previous = current
    return previous[-1]


@dataclasses.dataclass
class Heard:
    """The output of whisper-cli, the detected language, and the CPU seconds used."""

    text: str
    language: str
    seconds: float


class Recognizer:
    """Runs whisper-cli with one model."""

    def __init__(self, program, model):
        self._program, self._model = program, model

    def hear(self, path, language, flags):
        """Raises RuntimeError if the program fails."""
        with tempfile.TemporaryDirectory() as folder:
            output, said = pathlib.Path(folder) / "text", pathlib.Path(folder) / "said"
            command = [self._program, "-m", self._model, "-f", path, "-l", language, "-t", "1", *flags, "-otxt", "-of", output]
            with open(said, "wb") as file:
                started = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=file)
                # Returns the CPU time of this process alone.
                _, status, used = os.wait4(started.pid, 0)
                started.returncode = os.waitstatus_to_exitcode(status)
            told = said.read_text(encoding="utf-8", errors="replace")
            if started.returncode != 0:
                raise RuntimeError(f"whisper-cli failed on {path}: {told[-500:]}")
            found = DETECTED.search(told)
            written = output.with_suffix(".txt")
            text = written.read_text(encoding="utf-8") if written.exists() else ""
        return Heard(" ".join(text.split()), found[1] if found else language, used.ru_utime + used.ru_stime)

    def hear_all(self, chosen, flags, language=None):
        """The result for each recording, in order; `language` overrides the recordings' own."""
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as workers:
            return list(workers.map(lambda one: self.hear(one.path, language or one.language, flags), chosen))


@dataclasses.dataclass
class Tally:
    """Counts over some recordings."""

    recordings: int = 0
    words: int = 0
    errors: int = 0
    exact: int = 0
    audio: float = 0.0
    processor: float = 0.0

    def add(self, recording, heard):
        said = words(recording.text)
        self.recordings += 1
        self.words += len(said)
        self.errors += distance(said, words(heard.text))
        self.exact += heard.text == recording.text
        self.audio += recording.seconds
        self.processor += heard.seconds

    @property
    def rate(self):
        return self.errors / max(1, self.words)


@dataclasses.dataclass
class Row:
    """One row of the tables: test, voices and result."""

    name: str
    noise: str
    language: str
    group: str
    tally: Tally


def _rows(recognizer, name, noise, chosen):
    """One row for each language and group of voices."""
    counted = {}
    for one, heard in zip(chosen, recognizer.hear_all(chosen, FLAGS[name])):
        counted.setdefault((one.language, one.group), Tally()).add(one, heard)
    return [Row(name, noise, language, group, tally) for (language, group), tally in counted.items()]


class Evaluation:
    """All tests of a model, on held-out sentences."""

    def __init__(self, recognizer, maker, count, tell):
        self._recognizer, self._maker, self._tell = recognizer, maker, tell
        self._short, self._long = maker.short(count), maker.several(count, recordings.LONG)
        self._longest = maker.several(max(1, count // 3), recordings.LONGEST)
        self.short_rows, self.long_rows, self.longest_rows = [], [], []
        self.found, self.silences = {}, Tally()
        self.four_seconds = []

    def run(self):
        for name in PASSES:
            for noise, decibels in recordings.NOISES.items():
                self._tell(f"{name}, {noise}")
                chosen = [self._maker.with_noise(one, decibels) for one in self._short]
                self.short_rows += _rows(self._recognizer, name, noise, chosen)
        for name in FLAGS:
            self._tell(f"long dictations, {name}")
            self.long_rows += _rows(self._recognizer, name, "clean", self._long)
        self._tell("longest dictations")
        self.longest_rows = _rows(self._recognizer, PLAIN, "clean", self._longest)
        self._tell("languages, silence, time")
        self._find_languages()
        for one in self._maker.silences():
            self.silences.add(one, self._recognizer.hear(one.path, one.language, PASSES["first pass"]))
        near = [one for one in self._short if 3.5 <= one.seconds <= 4.5]
        self.four_seconds = sorted(self._recognizer.hear(one.path, one.language, PASSES["first pass"]).seconds for one in near)

    def _find_languages(self):
        usual = [one for one in self._short if one.group != "odd"]
        heard = self._recognizer.hear_all(usual, PASSES["first pass"], "auto")
        for language in grammar.LANGUAGES:
            found = [two.language for one, two in zip(usual, heard) if one.language == language]
            self.found[language] = (found.count(language), len(found))

    def rate(self, group):
        """The word error rate of a group of voices, without noise, over both languages and passes."""
        chosen = [row.tally for row in self.short_rows if row.noise == "clean" and row.group == group]
        return sum(tally.errors for tally in chosen) / max(1, sum(tally.words for tally in chosen))

    def long_rate(self):
        """The same for the long dictations with plain flags."""
        chosen = [row.tally for row in self.long_rows if row.name == PLAIN]
        return sum(tally.errors for tally in chosen) / max(1, sum(tally.words for tally in chosen))


def program_of(root):
    """The path of the whisper-cli built by this tree."""
    command = [os.path.join(root, "Tools/whisper-cli/install"), "--build", "--where"]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.strip()
