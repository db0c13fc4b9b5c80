"""The network: a small encoder and decoder of the Whisper family, with two more outputs that only the training needs."""

import dataclasses
import math

import torch
from torch import nn
from torch.nn import functional

from . import front_end


@dataclasses.dataclass(frozen=True)
class Shape:
    """The sizes that stand at the head of the model's file."""

    # Half a frame each: 512 are 10.24 seconds. A multiple of 256, to which whisper.cpp rounds up.
    audio_context: int = 512
    text_context: int = 128
    width: int = 128
    heads: int = 4
    # Whisper.cpp takes a decoder of two layers for a distilled model, which writes no timestamps.
    layers: int = 3

    @property
    def window_seconds(self):
        return self.audio_context * 2 / front_end.FRAMES_PER_SECOND

    @property
    def timestamps(self):
        """The number of the last moment in the window, counted in steps of a timestamp."""
        return self.audio_context


# A family without a bias at its output can silence what is never written only by an entry that is always 1: the last one.
SILENCED = -30.0


def sinusoids(length, width):
    """The encoder's fixed sense of position."""
    rates = torch.exp(-math.log(10000) / (width // 2 - 1) * torch.arange(width // 2).float())
    angles = torch.arange(length).float()[:, None] * rates[None]
    return torch.cat([angles.sin(), angles.cos()], 1)


class Attention(nn.Module):
    def __init__(self, shape):
        super().__init__()
        self.heads = shape.heads
        self.query = nn.Linear(shape.width, shape.width)
        self.key = nn.Linear(shape.width, shape.width, bias=False)
        self.value = nn.Linear(shape.width, shape.width)
        self.out = nn.Linear(shape.width, shape.width)

    def _split(self, values):
        batch, length, width = values.shape
        return values.view(batch, length, self.heads, width // self.heads).transpose(1, 2)

    def forward(self, here, there, mask=None):
        """What is gathered, and where every head looked."""
        query, key, value = self._split(self.query(here)), self._split(self.key(there)), self._split(self.value(there))
        weights = query @ key.transpose(2, 3) * query.shape[-1] ** -0.5
        if mask is not None:
            weights = weights + mask
        weights = weights.softmax(-1)
        gathered = (weights @ value).transpose(1, 2).reshape(here.shape)
        return self.out(gathered), weights


class Block(nn.Module):
    def __init__(self, shape, is_decoder):
        super().__init__()
        self.attn = Attention(shape)
        self.attn_ln = nn.LayerNorm(shape.width)
        if is_decoder:
            self.cross_attn = Attention(shape)
            self.cross_attn_ln = nn.LayerNorm(shape.width)
        self.mlp = nn.Sequential(
            nn.Linear(shape.width, 4 * shape.width), nn.GELU(), nn.Linear(4 * shape.width, shape.width))
        self.mlp_ln = nn.LayerNorm(shape.width)

    def forward(self, values, sound=None, mask=None):
        normed = self.attn_ln(values)
        values = values + self.attn(normed, normed, mask)[0]
        looked = None
        if sound is not None:
            gathered, looked = self.cross_attn(self.cross_attn_ln(values), sound)
            values = values + gathered
        return values + self.mlp(self.mlp_ln(values)), looked


def _convolved(layer, values):
    """What the layer makes of (batch, length, channels). As a product of matrices: where torch 1.13 convolves on a
    processor by itself, now and then a gradient holds what happened to lie in the memory."""
    padded = functional.pad(values, (0, 0, layer.padding[0], layer.padding[0]))
    pieces = padded.unfold(1, layer.kernel_size[0], layer.stride[0])
    return functional.linear(pieces.flatten(2), layer.weight.flatten(1), layer.bias)


class Network(nn.Module):
    """`rows` are the tokens that can be written; `phonemes` and `words` are the kinds that the training tells apart in the
    sound itself, 0 standing for none."""

    def __init__(self, shape, rows, phonemes, words):
        super().__init__()
        self.shape = shape
        width = shape.width
        self.conv1 = nn.Conv1d(front_end.BANDS, width, 3, padding=1)
        self.conv2 = nn.Conv1d(width, width, 3, stride=2, padding=1)
        self.encoder = nn.ModuleList(Block(shape, False) for _ in range(shape.layers))
        self.ln_post = nn.LayerNorm(width)
        self.embedding = nn.Parameter(torch.randn(rows, width) * 0.05)
        self.text_positions = nn.Parameter(torch.randn(shape.text_context, width) * 0.02)
        self.decoder = nn.ModuleList(Block(shape, True) for _ in range(shape.layers))
        self.ln = nn.LayerNorm(width)
        self.phonemes = nn.Linear(width, phonemes)
        self.words = nn.Linear(width, words)
        self.register_buffer("sound_positions", sinusoids(shape.audio_context, width))
        constant = torch.zeros(width)
        constant[-1] = 1
        self.register_buffer("constant", constant)
        later = torch.full((shape.text_context, shape.text_context), -1e9)
        self.register_buffer("later", torch.triu(later, 1))
        with torch.no_grad():
            self.embedding[:, -1] = 0

    def output_norm(self):
        """Weight and bias of the last norm, whose last entry is always 1."""
        keep = 1 - self.constant
        return self.ln.weight * keep, self.ln.bias * keep + self.constant

    def encode(self, mel):
        """(batch, frames, bands) to what the decoder looks at, and what the last layer but one made of it."""
        values = functional.gelu(_convolved(self.conv1, mel))
        values = functional.gelu(_convolved(self.conv2, values))
        values = values + self.sound_positions[:values.shape[1]]
        for block in self.encoder[:-1]:
            values, _ = block(values)
        early = values
        values, _ = self.encoder[-1](values)
        return self.ln_post(values), early

    def decode(self, rows, sound):
        """What follows each of the tokens (as rows), before the output, and where each layer looked."""
        length = rows.shape[1]
        values = self.embedding[rows] + self.text_positions[:length]
        looks = []
        for block in self.decoder:
            values, looked = block(values, sound, self.later[:length, :length])
            looks.append(looked)
        weight, bias = self.output_norm()
        return functional.layer_norm(values, values.shape[-1:], weight, bias), looks

    def scores(self, values):
        return values @ self.embedding.t()

    def hold_constant(self):
        """Keeps the entry that silences tokens within what eight bits can hold beside the others."""
        with torch.no_grad():
            self.embedding[:, -1].clamp_(-20, 20)
