"""The numbers by which the model writes: a small table of words, and the fixed ones of its family."""

from . import grammar

# Fixed by the file format: a multilingual model has this many tokens, and these of them control the decoder.
COUNT = 51865
END = 50257
START = 50258
LANGUAGE = {"en": 50259, "ro": 50259 + 25}
TRANSCRIBE = 50359
PREVIOUS = 50361
NO_TIMESTAMPS = 50363
FIRST_TIMESTAMP = 50364
# One timestamp counts this many seconds.
TIMESTAMP_SECONDS = 0.02
# The first numbers of every model of the family.
BYTES = [bytes([value]) for value in range(256)]


class Tokens:
    """The table: every single byte, then every word with a blank before it, as it stands within and at the head of a
    sentence."""

    def __init__(self, grammars, timestamps):
        words = {" " + form for one in grammars.values() for word in one.words for form in (word, grammar.capitalized(word))}
        words |= {token for token in grammar.tokens(grammar.SILENCE) if token.startswith(" ")}
        self.texts = BYTES + sorted(word.encode() for word in words)
        self._numbers = {text: number for number, text in enumerate(self.texts)}
        controls = [END, START, *LANGUAGE.values(), TRANSCRIBE, PREVIOUS, NO_TIMESTAMPS]
        # Only these can ever be written, so only these have a row in the network that is trained.
        self.used = [*range(len(self.texts)), *controls, *(FIRST_TIMESTAMP + step for step in range(timestamps + 1))]
        self.row = {number: row for row, number in enumerate(self.used)}
        self.last_timestamp = FIRST_TIMESTAMP + timestamps

    def number(self, token):
        """The number of a word with its blank, or of a mark."""
        return self._numbers[token.encode()]

    def timestamp(self, seconds):
        """The number of a moment, on the grid of a tenth of a second to which the model is held."""
        step = round(seconds * 10) * 5
        return min(self.last_timestamp, FIRST_TIMESTAMP + max(0, step))
