"""Prints how well a model understands, through the real whisper-cli, as tables."""

import argparse
import pathlib
import sys
import tempfile

from . import evaluation, recordings, report

ROOT = pathlib.Path(__file__).resolve().parents[3]
MODEL = ROOT / "Resources/StartingModel/ggml-tolmi-starter-q8_0.bin"


def _tell(text):
    print(text, file=sys.stderr, flush=True)


def main():
    parser = argparse.ArgumentParser(prog="Tools/speech-model/evaluate", description=__doc__)
    parser.add_argument("--model", default=str(MODEL), help="the model's file (default: that of the tree)")
    parser.add_argument("--count", type=int, default=27, help="sentences of each language and kind of voice")
    parser.add_argument("--seed", type=int, default=777, help="the same seed takes the same sentences")
    parser.add_argument("--report", help="a file that gets the tables too")
    arguments = parser.parse_args()
    recognizer = evaluation.Recognizer(evaluation.program_of(ROOT), arguments.model)
    with tempfile.TemporaryDirectory() as folder:
        result = evaluation.Evaluation(recognizer, recordings.Maker(folder, arguments.seed), arguments.count, _tell)
        result.run()
    text = report.text(result)
    print(text, end="")
    if arguments.report:
        pathlib.Path(arguments.report).write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main()
