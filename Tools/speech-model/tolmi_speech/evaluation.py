"""Word error rates of a model through the real whisper-cli, as a table."""

import collections
import dataclasses
import os
import pathlib
import re
import resource
import subprocess
import tempfile

from . import grammar, recordings

# The flags of the two passes, as the program gives them.
PASSES = {"first pass": ("-bo", "2", "-bs", "2", "-tp", "0"), "second pass": ("-bo", "5", "-bs", "5", "-tp", "0")}
PLAIN_FLAGS = ()
WORD = re.compile(r"[\w'-]+")
DETECTED = re.compile(r"auto-detected language: (\w+)")


def words(text):
    """What counts: words in small letters."""
    return WORD.findall(text.lower())


def distance(said, heard):
    """How many words must be put in, taken out or changed."""
    previous = list(range(len(heard) + 1))
    for place, word in enumerate(said, 1):
        current = [place]
        for other, candidate in enumerate(heard, 1):
            current.append(min(previous[other] + 1, current[-1] + 1, previous[other - 1] + (word != candidate)))
        previous = current
    return previous[-1]


@dataclasses.dataclass
class Heard:
    """What whisper-cli wrote, the language that it found by itself, and the processor seconds that it took."""

    text: str
    language: str
    seconds: float


class Recognizer:
    """Runs whisper-cli with one model."""

    def __init__(self, program, model):
        self._program, self._model = program, model

    def hear(self, path, language, flags):
        """Raises subprocess.CalledProcessError when the program fails."""
        with tempfile.TemporaryDirectory() as folder:
            output = pathlib.Path(folder) / "text"
            before = resource.getrusage(resource.RUSAGE_CHILDREN)
            ran = subprocess.run([self._program, "-m", self._model, "-f", path, "-l", language, "-t", "1", *flags, "-otxt",
                                  "-of", str(output)], check=True, capture_output=True, text=True)
            after = resource.getrusage(resource.RUSAGE_CHILDREN)
            found = DETECTED.search(ran.stderr)
            written = output.with_suffix(".txt")
            text = written.read_text(encoding="utf-8") if written.exists() else ""
        seconds = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
        return Heard(" ".join(text.split()), found[1] if found else language, seconds)


@dataclasses.dataclass
class Tally:
    """What was counted over some recordings."""

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


def tallies(recognizer, chosen, flags, on_wrong=None):
    """One tally for each language and group."""
    counted = collections.defaultdict(Tally)
    for one in chosen:
        heard = recognizer.hear(one.path, one.language, flags)
        counted[one.language, one.group].add(one, heard)
        if on_wrong and heard.text != one.text:
            on_wrong(one, heard)
    return counted


def detection(recognizer, chosen):
    """For each language, of how many recordings whisper-cli found the language by itself, and of how many in all."""
    right = collections.Counter()
    total = collections.Counter()
    for one in chosen:
        total[one.language] += 1
        right[one.language] += recognizer.hear(one.path, "auto", PASSES["first pass"]).language == one.language
    return {language: (right[language], total[language]) for language in grammar.LANGUAGES}


def _row(cells):
    return "| " + " | ".join(str(cell) for cell in cells) + " |"


def _error_rows(title, counted):
    for (language, group), tally in sorted(counted.items()):
        yield _row((title, language, group, tally.recordings, f"{100 * tally.rate:.1f} %", tally.exact,
                    f"{tally.processor / max(0.001, tally.audio):.3f}"))


def report(recognizer, folder, count, seed, tell):
    """The whole evaluation as lines of a text."""
    maker = recordings.Maker(folder, seed)
    short, long = maker.short(count), maker.long(count)
    lines = [_row(("pass", "language", "voices", "sentences", "word errors", "exact", "processor s for 1 s")),
             _row(("---",) * 7)]
    for name, flags in PASSES.items():
        for noise, decibels in recordings.NOISES.items():
            tell(f"{name}, {noise}")
            chosen = short if decibels is None else [recordings.with_noise(one, decibels, seed) for one in short]
            lines += _error_rows(f"{name}, {noise}", tallies(recognizer, chosen, flags))
            if name == "second pass":
                break
    tell("long dictations")
    lines += _error_rows("plain flags", tallies(recognizer, long, PLAIN_FLAGS))
    lines += _error_rows("first pass", tallies(recognizer, long, PASSES["first pass"]))
    tell("languages")
    usual = [one for one in short if one.group in ("plain", "seen", "unseen")]
    for language, (right, total) in detection(recognizer, usual).items():
        lines.append(_row(("-l auto", language, "plain, seen, unseen", total, f"{right} of {total} found", "", "")))
    return lines


def program_of(root):
    """The path of the whisper-cli that the tree builds."""
    command = [os.path.join(root, "Tools/whisper-cli/install"), "--build", "--where"]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.strip()
