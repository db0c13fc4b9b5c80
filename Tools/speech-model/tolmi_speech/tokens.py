"""The model's tokens: a small table of words, and the fixed ones of the Whisper family."""

from . import grammar

# Fixed by the file format: the number of tokens of a multilingual model, and its control tokens.
COUNT = 51865
END = 50257
START = 50258
LANGUAGE = {"en": 50259, "ro": 50259 + 25}
TRANSCRIBE = 50359
PREVIOUS = 50361
NO_TIMESTAMPS = 50363
FIRST_TIMESTAMP = 50364
# Seconds per timestamp step.
TIMESTAMP_SECONDS = 0.02
# The first tokens of every model of the family.
BYTES = [bytes([value]) for value in range(256)]


class Tokens:
    """The table: every single byte, then every word with a leading space, as written within and at the start of a
    sentence."""

    def __init__(self, grammars, timestamps):
        words = {" " + form for one in grammars.values() for word in one.words for form in (word, grammar.capitalized(word))}
        words |= {token for token in grammar.tokens(grammar.SILENCE) if token.startswith(" ")}
        self.texts = BYTES + sorted(word.encode() for word in words)
        self._numbers = {text: number for number, text in enumerate(self.texts)}
        controls = [END, START, *LANGUAGE.values(), TRANSCRIBE, PREVIOUS, NO_TIMESTAMPS]
        # Only these can be written, so only these have a row in the trained network.
        self.used = [*range(len(self.texts)), *controls, *(FIRST_TIMESTAMP + step for step in range(timestamps + 1))]
        self.row = {number: row for row, number in enumerate(self.used)}
        self.last_timestamp = FIRST_TIMESTAMP + timestamps

    def number(self, token):
        """The token of a word with its leading space, or of a punctuation mark."""
        return self._numbers[token.encode()]

    def timestamp(self, seconds):
        """The timestamp token of a time, rounded to the model's grid of a tenth of a second."""
        step = round(seconds * 10) * 5
        return min(self.last_timestamp, FIRST_TIMESTAMP + max(0, step))
