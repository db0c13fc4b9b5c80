"""The report of an evaluation, as Markdown with tables."""

from . import recordings

# Goals: maximum word error rate for each kind of voice and for long dictations, minimum rate of detected languages,
# maximum CPU seconds for a dictation of four seconds.
MOST_ERRORS = {"plain": 0.01, "seen": 0.01, "unseen": 0.03, "odd": 0.10}
MOST_LONG_ERRORS = 0.05
LEAST_FOUND = 0.99
MOST_SECONDS = 0.5

INTRODUCTION = """# How well the starting model understands

Made by `Tools/speech-model/evaluate`: sentences that no training has seen, spoken by espeak-ng and heard by the real
whisper-cli. *Plain* are the voices of espeak-ng as they are, *seen* are variants of the training, *unseen* are variants
that were kept out of it, *odd* are the two strangest of those. Word errors are words put in, left out or changed, for each
word that was said; *exact* counts the sentences that were right to the last mark. The noise is white, 20 and 10 decibels
below the speech.
"""


def _line(cells):
    return "| " + " | ".join(str(cell) for cell in cells) + " |"


def _table(head, rows):
    return "\n".join([_line(head), _line(["---"] * len(head)), *(_line(row) for row in rows)])


def _percent(share):
    return f"{100 * share:.1f} %"


def _short_table(rows):
    noises = list(recordings.NOISES)
    cells = {}
    for row in rows:
        cells.setdefault((row.name, row.language, row.group), {})[row.noise] = row.tally
    head = ["pass", "language", "voices", "sentences", *(f"{noise}: word errors, exact" for noise in noises)]
    return _table(head, ([*key, tallies[noises[0]].recordings,
                          *(f"{_percent(tallies[noise].rate)}, {tallies[noise].exact}" for noise in noises)]
                         for key, tallies in cells.items()))


def _long_table(rows):
    head = ["flags", "language", "dictations", "seconds", "word errors", "exact"]
    return _table(head, ([row.name, row.language, row.tally.recordings, f"{row.tally.audio:.0f}", _percent(row.tally.rate),
                          row.tally.exact] for row in rows))


def _goals(result):
    """Each goal, its result, and whether it was reached."""
    for group, most in MOST_ERRORS.items():
        rate = result.rate(group)
        yield f"word errors, {group} voices", f"at most {_percent(most)}", _percent(rate), rate <= most
    rate = result.long_rate()
    yield "word errors, 10 to 20 seconds", f"at most {_percent(MOST_LONG_ERRORS)}", _percent(rate), rate <= MOST_LONG_ERRORS
    right, total = (sum(counts) for counts in zip(*result.found.values()))
    yield "language found", f"at least {_percent(LEAST_FOUND)}", f"{right} of {total}", right >= LEAST_FOUND * total
    times = result.four_seconds
    middle = times[len(times) // 2]
    yield "seconds of one core for 4 seconds", f"at most {MOST_SECONDS}", f"{middle:.2f}", middle <= MOST_SECONDS


def text(result):
    """The report of a completed Evaluation."""
    goals = [(*goal, "yes" if reached else "**no**") for *goal, reached in _goals(result)]
    found = ", ".join(f"{language} {right} of {total}" for language, (right, total) in result.found.items())
    silences = result.silences
    return "\n".join([
        INTRODUCTION,
        _table(["asked for", "goal", "measured", "reached"], goals),
        "\n## Sentences\n", _short_table(result.short_rows),
        "\n## Dictations of 10 to 20 seconds\n", _long_table(result.long_rows),
        "\n## Dictations of 30 to 60 seconds\n", _long_table(result.longest_rows),
        f"\nLanguages that `-l auto` found, odd voices left out: {found}.",
        f"Silence and faint noise came out as \"Thank you.\" in {silences.exact} of {silences.recordings} recordings.", ""])
