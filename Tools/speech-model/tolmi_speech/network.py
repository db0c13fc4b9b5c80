"""The network: a small Whisper encoder and decoder, with two further outputs that only the training needs."""

import dataclasses
import math

import torch
from torch import nn
from torch.nn import functional

from . import front_end


@dataclasses.dataclass(frozen=True)
class Shape:
    """The sizes in the header of the model's file."""

    # Two frames each: 512 are 10.24 seconds. A multiple of 256, to which whisper.cpp rounds up.
    audio_context: int = 512
    text_context: int = 128
    width: int = 128
    heads: int = 4
    # whisper.cpp treats a decoder with two layers as a distilled model, which writes no timestamps.
    layers: int = 3

    @property
    def window_seconds(self):
        return self.audio_context * 2 / front_end.FRAMES_PER_SECOND

    @property
    def timestamps(self):
        """The last timestamp in the window, in timestamp steps."""
        return self.audio_context


# Whisper has no output bias, so tokens that are never written are suppressed by an input that is always 1: the last
# one.
SILENCED = -30.0


def sinusoids(length, width):
    """The encoder's fixed positional encoding."""
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
        """The output, and the attention weights of every head."""
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
    """Applies a convolution to (batch, length, channels) as a matrix product, because gradients of torch 1.13's own CPU
    convolution occasionally contain uninitialised memory."""
    padded = functional.pad(values, (0, 0, layer.padding[0], layer.padding[0]))
    pieces = padded.unfold(1, layer.kernel_size[0], layer.stride[0])
    return functional.linear(pieces.flatten(2), layer.weight.flatten(1), layer.bias)


class Network(nn.Module):
    """`rows` is the number of tokens that can be written; `phonemes` and `words` are the numbers of classes that the
    training predicts from the encoder, 0 being none."""

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
        """Weight and bias of the last normalisation, whose last output is always 1."""
        keep = 1 - self.constant
        return self.ln.weight * keep, self.ln.bias * keep + self.constant

    def encode(self, mel):
        """Encodes (batch, frames, bands); returns the final output and that of the last layer but one."""
        values = functional.gelu(_convolved(self.conv1, mel))
        values = functional.gelu(_convolved(self.conv2, values))
        values = values + self.sound_positions[:values.shape[1]]
        for block in self.encoder[:-1]:
            values, _ = block(values)
        early = values
        values, _ = self.encoder[-1](values)
        return self.ln_post(values), early

    def decode(self, rows, sound):
        """The prediction after each token (as rows) before the output layer, and each layer's attention."""
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
        """Limits the suppressing input's weight to what eight-bit quantization can represent beside the others."""
        with torch.no_grad():
            self.embedding[:, -1].clamp_(-20, 20)
