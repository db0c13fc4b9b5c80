"""The training sentences: words and patterns of the files in ../grammar, combined at random."""

import hashlib
import pathlib
import re

LANGUAGES = ("en", "ro")
FILES = {"en": "english.txt", "ro": "romanian.txt"}
FOLDER = pathlib.Path(__file__).resolve().parent.parent / "grammar"

# The model's output for silence, as in other models of its family.
SILENCE = "Thank you."

# One sentence in this many is held out, decided by a hash of its text, so that no list is needed.
HELD_OUT_SHARE = 16
# Longer sentences do not fit into the model's window together with their neighbours.
MOST_TOKENS = 26
# Share of sentences that are random words, so that words are learnt, not patterns.
RANDOM_WORDS_SHARE = 0.3

TOKEN = re.compile(r"[\w'-]+|[.,?!]")
PLACE = re.compile(r"\{(\w+)\}")
PUNCTUATION = ".,?!"
# Homophones, which random word sequences cannot distinguish.
SOUND_ALIKE = {
    "en": {"to", "two", "too", "for", "four", "no", "know", "there", "a", "may", "by", "buy", "um", "uh", "write", "right",
           "one", "won", "week", "our", "hour", "here", "past", "or", "whether", "weather", "euros"},
    "ro": {"mai", "o", "s-a"},
}


class Grammar:
    """One language's lists and patterns."""

    def __init__(self, language):
        self.language = language
        self.lists = {}
        self.sentences = []
        self._read(FOLDER / FILES[language])
        self.names = set(self.lists.pop("names"))
        self.words = sorted({self._base(word) for word in self._all_words()})
        self._free_words = [word for word in self.words if word.lower() not in SOUND_ALIKE[language]]

    def _read(self, path):
        lines = [line.strip() for line in path.read_text(encoding="utf-8").splitlines()]
        lines = [line for line in lines if line and not line.startswith("#")]
        middle = lines.index("sentences")
        for line in lines[:middle]:
            name, entries = line.split(":", 1)
            self.lists[name] = [entry.strip() for entry in entries.split(",")]
        self.sentences = lines[middle + 1:]

    def _all_words(self):
        for text in [*self.sentences, *(entry for entries in self.lists.values() for entry in entries)]:
            yield from (token for token in TOKEN.findall(PLACE.sub(" ", text)) if token not in PUNCTUATION)

    def _base(self, word):
        return word if word in self.names else word.lower()

    def _filled(self, pattern, random):
        while place := PLACE.search(pattern):
            pattern = pattern[:place.start()] + random.choice(self.lists[place[1]]) + pattern[place.end():]
        return capitalized(pattern)

    def _words_in_a_row(self, random):
        words = [random.choice(self._free_words) for _ in range(random.randint(2, 9))]
        if len(words) > 4 and random.random() < 0.3:
            words[len(words) // 2] += ","
        return capitalized(" ".join(words)) + "."

    def pattern_sentence(self, random, held_out):
        """A sentence from the patterns, either for training or held out."""
        while True:
            text = self._filled(random.choice(self.sentences), random)
            if is_held_out(text) == held_out and len(tokens(text)) <= MOST_TOKENS:
                return text

    def training_sentence(self, random):
        """Any sentence that is not held out, including random words."""
        while True:
            row = random.random() < RANDOM_WORDS_SHARE
            text = self._words_in_a_row(random) if row else self.pattern_sentence(random, False)
            if not is_held_out(text):
                return text


def capitalized(text):
    return text[:1].upper() + text[1:]


def is_held_out(text):
    """Whether a sentence is held out of the training."""
    return hashlib.md5(text.encode()).digest()[0] % HELD_OUT_SHARE == 0


def tokens(text):
    """The text's tokens: words with a leading space, punctuation without."""
    return [token if token in PUNCTUATION else " " + token for token in TOKEN.findall(text)]


def grammars():
    """Both grammars, by language."""
    return {language: Grammar(language) for language in LANGUAGES}
