"""Makes a model: speech, training, and the file. A run that was stopped goes on where it was."""

import argparse
import concurrent.futures
import os
import pathlib
import sys

import torch

from . import ggml_file, grammar, scenes, tokens, training, utterances, variants
from .network import Shape

SHARD = 500


def _arguments():
    parser = argparse.ArgumentParser(prog="Tools/speech-model/make", description=__doc__)
    parser.add_argument("--out", default="ggml-tolmi-starter-q8_0.bin", help="the model's file (default: %(default)s)")
    parser.add_argument("--work", default="speech-model-work", help="where speech and checkpoints are kept")
    parser.add_argument("--utterances", type=int, default=32000, help="spoken sentences (default: %(default)s)")
    parser.add_argument("--minutes", type=float, default=155, help="minutes of training on every processor (default: %(default)s)")
    parser.add_argument("--seed", type=int, default=1, help="the same seed makes the same speech (default: %(default)s)")
    parser.add_argument("--dry-run", action="store_true", help="the whole road in a minute; the model understands nothing")
    arguments = parser.parse_args()
    if arguments.dry_run:
        arguments.utterances, arguments.minutes = 60, 0.2
    return arguments


def _tell(text):
    print(text, file=sys.stderr, flush=True)


def _speech(arguments):
    count = max(1, arguments.utterances // SHARD)
    size = min(SHARD, arguments.utterances)
    folder = pathlib.Path(arguments.work) / f"speech-{arguments.seed}"
    data = variants.make_data(arguments.work)
    spoken = []
    with concurrent.futures.ProcessPoolExecutor(os.cpu_count()) as workers:
        seeds = [arguments.seed * 10000 + place for place in range(count)]
        made = workers.map(utterances.keep_shard, [folder] * count, [data] * count, seeds, [size] * count)
        for done, path in enumerate(made, 1):
            spoken += utterances.load_shard(path)
            _tell(f"speech: {done} of {count} files")
    return spoken


def _report(part, step, means):
    shares = ", ".join(f"{name} {value:.3f}" for name, value in means.items())
    _tell(f"training: {100 * part:.1f} %, step {step}: {shares}")


def main():
    arguments = _arguments()
    grammars = grammar.grammars()
    table = tokens.Tokens(grammars, Shape().timestamps)
    pool = scenes.Pool(_speech(arguments), grammars)
    checkpoint = pathlib.Path(arguments.work) / f"checkpoint-{arguments.seed}.pt"
    # Matrices this small do not benefit from threads; processes are used instead.
    torch.set_num_threads(1)
    trainer = training.Trainer(pool, table, str(checkpoint), arguments.seed)
    trainer.run(arguments.minutes * 60, _report)
    ggml_file.write(trainer.network, table, arguments.out)
    _tell(f"written: {arguments.out}, {os.path.getsize(arguments.out)} bytes")


if __name__ == "__main__":
    main()
