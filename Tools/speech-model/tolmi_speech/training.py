"""Trains the network on windows that are generated on the fly."""

import dataclasses
import math
import multiprocessing
import os
import random as random_module
import time

import numpy
import torch
from torch.nn import functional

from . import batches, windows
from .network import Network, Shape
from .orthogonal import Muon

SOUND_WEIGHT = 0.5
LOOK_WEIGHT = 0.2
# Number of heads per decoder layer whose attention is supervised.
GUIDED_HEADS = 2
MOST_GRADIENT = 1.0
WARM_UP_STEPS = 200
# The hidden-layer matrices, and their learning rate relative to all other parameters.
INNER = ("encoder.", "decoder.", "conv")
MUON_FACTOR = 7.0
# Share of shorter windows, for short dictations.
SHORT_SHARE = 0.25
CHECKPOINT_SECONDS = 120
REPORT_STEPS = 25


@dataclasses.dataclass(frozen=True)
class Phase:
    """A phase with a window length, a batch size, a share of the time and a falling learning rate."""

    steps: int
    size: int
    share: float
    first_rate: float
    last_rate: float


# Short windows first: with them the network learns the alignment of sound and words in minutes instead of hours.
PHASES = (
    Phase(128, 32, 0.22, 2e-3, 1.4e-3),
    Phase(256, 24, 0.18, 1.4e-3, 1e-3),
    Phase(512, 12, 0.60, 1e-3, 1e-5),
)


def _look_loss(weights, marks):
    """Loss of the supervised heads' attention to the marked steps."""
    asked = marks.sum(-1) > 0
    if not asked.any():
        return torch.zeros((), device=weights.device)
    share = (weights[:, :GUIDED_HEADS] * marks[:, None]).sum(-1).permute(0, 2, 1)[asked]
    return -torch.log(share + 1e-4).mean()


def losses(network, batch):
    """The total loss, and its reported parts."""
    sound, early = network.encode(batch.mel)
    sounds = functional.cross_entropy(network.phonemes(early).flatten(0, 1), batch.sound_labels.flatten())
    words = functional.cross_entropy(
        network.words(sound).flatten(0, 1), batch.word_labels.flatten(), ignore_index=windows.IGNORED)
    values, looks = network.decode(batch.rows, sound)
    asked = batch.targets != windows.IGNORED
    scores = network.scores(values[asked])
    text = functional.cross_entropy(scores, batch.targets[asked])
    # The first layer attends to the current token, the others to the next one.
    look = _look_loss(looks[0], batch.here) + sum(_look_loss(one, batch.ahead) for one in looks[1:])
    right = (scores.argmax(-1) == batch.targets[asked]).float().mean()
    whole = text + SOUND_WEIGHT * (sounds + words) + LOOK_WEIGHT * look
    return whole, {"text": text, "sounds": sounds, "words": words, "look": look, "right": right}


def optimizers(network):
    """One optimiser for the hidden-layer matrices, one for all other parameters."""
    inner = [value for name, value in network.named_parameters() if value.ndim >= 2 and name.startswith(INNER)]
    known = {id(value) for value in inner}
    others = [value for value in network.parameters() if id(value) not in known]
    made = [Muon(inner, lr=1e-3, weight_decay=0.01), torch.optim.AdamW(others, lr=1e-3, betas=(0.9, 0.98), weight_decay=0.0)]
    for optimizer, factor in zip(made, (MUON_FACTOR, 1.0)):
        for group in optimizer.param_groups:
            group["factor"] = factor
    return made


class Trainer:
    """Trains for a total time over any number of runs: a checkpoint stores the time spent. It is CPU time, so that other
    load on the machine does not reduce quality."""

    def __init__(self, pool, table, checkpoint, seed):
        self._pool, self._table, self._checkpoint, self._seed = pool, table, checkpoint, seed
        torch.manual_seed(seed)
        self.shape = Shape()
        self._device = "cuda" if torch.cuda.is_available() else "cpu"
        self.network = Network(self.shape, len(table.used), len(pool.sound_kinds) + 1, len(pool.word_kinds) + 1)
        self.network.to(self._device)
        self._optimizers = optimizers(self.network)
        self.step = 0
        # Shared with the other workers, whose schedule depends on it.
        self._spent = multiprocessing.Value("d", 0.0)
        if os.path.exists(checkpoint):
            self._resume()

    def _resume(self):
        kept = torch.load(self._checkpoint, map_location=self._device)
        self.network.load_state_dict(kept["network"])
        for optimizer, state in zip(self._optimizers, kept["optimizers"]):
            optimizer.load_state_dict(state)
        self.step, self._spent.value = kept["step"], kept["seconds"]

    def keep(self):
        """Writes the checkpoint atomically."""
        fresh = f"{self._checkpoint}.new"
        torch.save({"network": self.network.state_dict(), "step": self.step, "seconds": self._spent.value,
                    "optimizers": [optimizer.state_dict() for optimizer in self._optimizers]}, fresh)
        os.replace(fresh, self._checkpoint)

    def _phase(self, done):
        """The current phase and its progress, 0 to 1."""
        for phase in PHASES:
            if done < phase.share:
                return phase, done / phase.share
            done -= phase.share
        return PHASES[-1], 1.0

    def _set_rates(self, done):
        phase, part = self._phase(done)
        rate = phase.last_rate + (phase.first_rate - phase.last_rate) * 0.5 * (1 + math.cos(math.pi * part))
        rate *= min(1.0, (self.step + 1) / WARM_UP_STEPS)
        for optimizer in self._optimizers:
            for group in optimizer.param_groups:
                group["lr"] = rate * group["factor"]

    def _batch(self, done, composer, random, generator):
        phase, _ = self._phase(done)
        steps, size = phase.steps, phase.size
        if steps == self.shape.audio_context and random.random() < SHORT_SHARE:
            steps, size = steps // 2, size * 2
        return batches.batch([composer.window(steps) for _ in range(size)], self._table, generator)

    def _learn(self, batch):
        loss, shares = losses(self.network, batch.to(self._device))
        for optimizer in self._optimizers:
            optimizer.zero_grad(set_to_none=True)
        loss.backward()
        torch.nn.utils.clip_grad_norm_(self.network.parameters(), MOST_GRADIENT, error_if_nonfinite=True)
        for optimizer in self._optimizers:
            optimizer.step()
        self.network.hold_constant()
        self.step += 1
        return {name: float(value) for name, value in shares.items()}

    def _steps(self, worker, total):
        """Trains on one batch after another and yields the reported values of each."""
        random = random_module.Random(f"{self._seed} {worker} {self.step}")
        generator = numpy.random.default_rng([self._seed, worker, self.step])
        composer = windows.Composer(self._pool, self._table, self.shape, random, generator)
        while (done := self._spent.value / total) < 1:
            self._set_rates(done)
            yield self._learn(self._batch(done, composer, random, generator))

    def _work(self, worker, total):
        """Runs a further process, which updates the shared parameters without locks."""
        parent = os.getppid()
        for _ in self._steps(worker, total):
            if os.getppid() != parent:
                return

    def _further_workers(self, total):
        """Starts the further processes; none with a GPU."""
        if self._device != "cpu":
            return []
        self.network.share_memory()
        fork = multiprocessing.get_context("fork")
        made = [fork.Process(target=self._work, args=(worker, total)) for worker in range(1, os.cpu_count())]
        for worker in made:
            worker.start()
        return made

    def run(self, total, report):
        """Trains until `total` seconds are spent; reports progress to `report`."""
        workers = self._further_workers(total)
        clock = time.process_time if self._device == "cpu" else time.monotonic
        last = kept = clock()
        means = {}
        for shares in self._steps(0, total):
            means = {name: 0.95 * means.get(name, value) + 0.05 * value for name, value in shares.items()}
            now = clock()
            self._spent.value += now - last
            last = now
            if self.step % REPORT_STEPS == 0:
                report(self._spent.value / total, self.step, means)
            if now - kept > CHECKPOINT_SECONDS:
                self.keep()
                kept = now
        for worker in workers:
            worker.join()
        self.keep()
