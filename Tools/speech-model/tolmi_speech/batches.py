"""Batches of windows as tensors for the network."""

import dataclasses

import numpy
import torch

from . import front_end
from .windows import HALF, IGNORED


@dataclasses.dataclass
class Batch:
    """A batch of windows of equal length. `here` and `ahead` mark, for each position of the sequence, the encoder steps of
    its token and of the next one."""

    mel: torch.Tensor
    rows: torch.Tensor
    targets: torch.Tensor
    here: torch.Tensor
    ahead: torch.Tensor
    sound_labels: torch.Tensor
    word_labels: torch.Tensor

    def to(self, device):
        return Batch(*(getattr(self, field.name).to(device) for field in dataclasses.fields(self)))


def _mel(windows, steps, generator):
    frames = steps * 2
    mel = front_end.log_mel(torch.from_numpy(numpy.stack([one.samples for one in windows])), frames)
    # Simulates the frequency response of microphones.
    tilts = torch.from_numpy(generator.uniform(-0.5, 0.5, len(windows)) * (generator.random(len(windows)) < 0.4)).float()
    mel = mel + tilts[:, None, None] * ((torch.arange(front_end.BANDS).float() - 40) / 40)[None, None]
    heard = torch.tensor([min(frames, (one.heard + HALF) // front_end.STEP + 1) for one in windows])
    mel[torch.arange(frames)[None] >= heard[:, None]] = torch.log10(torch.tensor(front_end.FLOOR))
    loudest = mel.amax((1, 2)) + torch.tensor([one.louder for one in windows], dtype=torch.float32)
    return front_end.scaled(mel, loudest[:, None, None])


def _mark(marks, span):
    if span:
        marks[max(0, int(span[0] * 50) - 2):max(0, int(span[1] * 50) + 2)] = 1


def batch(windows, table, generator):
    """Combines windows of equal length into a batch."""
    steps = len(windows[0].sound_labels)
    length = max(len(one.sequence) for one in windows)
    rows = torch.zeros(len(windows), length, dtype=torch.long)
    targets = torch.full((len(windows), length), IGNORED)
    here, ahead = torch.zeros(len(windows), length, steps), torch.zeros(len(windows), length, steps)
    for place, one in enumerate(windows):
        count = len(one.sequence)
        rows[place, :count] = torch.tensor([table.row[number] for number in one.sequence])
        targets[place, :count] = torch.tensor([table.row[number] if number >= 0 else IGNORED for number in one.targets])
        for step in range(count):
            _mark(here[place, step], one.spans[step])
            _mark(ahead[place, step], one.spans[step + 1])
    return Batch(_mel(windows, steps, generator), rows, targets, here, ahead,
                 torch.from_numpy(numpy.stack([one.sound_labels for one in windows])),
                 torch.from_numpy(numpy.stack([one.word_labels for one in windows])))
