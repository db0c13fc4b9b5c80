"""Tests of the parts of Tools/speech-model that need only the standard library."""

import pathlib
import random
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "Tools/speech-model"))

from tolmi_speech import grammar, tokens  # noqa: E402

WINDOW_STEPS = 512


class Grammar(unittest.TestCase):
    def setUp(self):
        self.grammars = grammar.grammars()

    def test_knows_more_than_five_hundred_words(self):
        self.assertGreater(sum(len(one.words) for one in self.grammars.values()), 500)

    def test_every_place_of_a_pattern_has_a_list(self):
        for one in self.grammars.values():
            for text in [*one.sentences, *(entry for entries in one.lists.values() for entry in entries)]:
                for name in grammar.PLACE.findall(text):
                    self.assertIn(name, one.lists, text)

    def test_every_list_is_used(self):
        for one in self.grammars.values():
            texts = " ".join([*one.sentences, *(entry for entries in one.lists.values() for entry in entries)])
            self.assertEqual(set(one.lists) - set(grammar.PLACE.findall(texts)), set())

    def test_training_never_says_what_is_held_out(self):
        for one in self.grammars.values():
            source = random.Random(1)
            for _ in range(500):
                self.assertFalse(grammar.is_held_out(one.training_sentence(source)))
                self.assertTrue(grammar.is_held_out(one.pattern_sentence(source, True)))

    def test_the_same_seed_says_the_same(self):
        for one in self.grammars.values():
            first, second = random.Random(7), random.Random(7)
            for _ in range(50):
                self.assertEqual(one.training_sentence(first), one.training_sentence(second))

    def test_knows_the_words_of_the_samples(self):
        for language, name in (("en", "english"), ("ro", "romanian")):
            known = {word.lower() for word in self.grammars[language].words}
            for path in (ROOT / "Resources/Samples").glob(f"{name}-*.txt"):
                said = [token.strip().lower() for token in grammar.tokens(path.read_text(encoding="utf-8"))]
                self.assertEqual(set(said) - known - set(grammar.PUNCTUATION), set(), path.name)

    def test_the_models_card_tells_every_word(self):
        card = (ROOT / "Resources/StartingModel/README.md").read_text(encoding="utf-8")
        told = set(grammar.TOKEN.findall(card[card.index("## The words"):]))
        for one in self.grammars.values():
            self.assertEqual(set(one.words) - told, set())
            self.assertIn(str(len(one.words)), card)

    def test_names_keep_their_capitals_everywhere(self):
        for one in self.grammars.values():
            for name in one.names:
                self.assertIn(name, one.words)
                self.assertNotIn(name.lower(), one.words)


class Tokens(unittest.TestCase):
    def setUp(self):
        self.grammars = grammar.grammars()
        self.table = tokens.Tokens(self.grammars, WINDOW_STEPS)

    def test_every_sentence_can_be_written(self):
        source = random.Random(3)
        for one in self.grammars.values():
            for _ in range(300):
                text = one.training_sentence(source)
                written = b"".join(self.table.texts[self.table.number(token)] for token in grammar.tokens(text))
                self.assertEqual(written.decode().strip(), text)

    def test_no_text_has_two_numbers(self):
        self.assertEqual(len(set(self.table.texts)), len(self.table.texts))

    def test_every_used_number_has_a_row_of_its_own(self):
        self.assertEqual(sorted(self.table.row.values()), list(range(len(self.table.used))))

    def test_words_leave_the_fixed_numbers_alone(self):
        self.assertLess(len(self.table.texts), tokens.END)

    def test_moments_lie_on_tenths_of_a_second_within_the_window(self):
        for seconds, steps in ((-1, 0), (0, 0), (0.04, 0), (0.06, 5), (1.0, 50), (10.2, 510), (99, WINDOW_STEPS)):
            self.assertEqual(self.table.timestamp(seconds), tokens.FIRST_TIMESTAMP + steps, seconds)


if __name__ == "__main__":
    unittest.main()
