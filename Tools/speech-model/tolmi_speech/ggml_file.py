"""Writes a network as a file that whisper-cli loads."""

import struct

import numpy
import torch

from . import front_end, tokens
from .network import SILENCED

MAGIC = 0x67676D6C
# Data types of a tensor.
FLOATS, HALVES, BYTES = 0, 1, 8
# File type: eight-bit matrices, quantization version 2.
MOSTLY_BYTES = 7 + 2 * 1000
BLOCK = 32


def _tensors(network, table):
    """All tensors by their names in the file."""
    state = {name: value.detach().float() for name, value in network.state_dict().items()}
    embedding = torch.zeros(tokens.COUNT, network.shape.width)
    embedding[:, -1] = SILENCED
    embedding[table.used] = state["embedding"].cpu()
    weight, bias = (value.detach() for value in network.output_norm())
    yield "encoder.positional_embedding", state["sound_positions"]
    for layer in ("conv1", "conv2"):
        yield f"encoder.{layer}.weight", state[f"{layer}.weight"]
        yield f"encoder.{layer}.bias", state[f"{layer}.bias"].reshape(-1, 1)
    yield "encoder.ln_post.weight", state["ln_post.weight"]
    yield "encoder.ln_post.bias", state["ln_post.bias"]
    yield "decoder.positional_embedding", state["text_positions"]
    yield "decoder.token_embedding.weight", embedding
    yield "decoder.ln.weight", weight
    yield "decoder.ln.bias", bias
    for side in ("encoder", "decoder"):
        for name, value in state.items():
            if name.startswith(f"{side}."):
                yield f"{side}.blocks.{name.removeprefix(f'{side}.')}", value


def _kind(name, values):
    if values.ndim == 1 or name.endswith((".bias", "positional_embedding")):
        return FLOATS
    return BYTES if values.ndim == 2 else HALVES


def as_blocks(values):
    """Quantizes each 32 numbers to a 16-bit float scale and 32 signed bytes."""
    blocks = values.reshape(-1, BLOCK).astype(numpy.float32)
    scales = numpy.abs(blocks).max(1) / 127
    steps = numpy.round(blocks / numpy.where(scales == 0, 1, scales)[:, None]).astype(numpy.int8)
    packed = numpy.empty((len(blocks), 2 + BLOCK), numpy.uint8)
    packed[:, :2] = scales.astype(numpy.float16)[:, None].view(numpy.uint8)
    packed[:, 2:] = steps.view(numpy.uint8)
    return packed.tobytes()


def _bytes_of(values, kind):
    if kind == BYTES:
        return as_blocks(values)
    return numpy.ascontiguousarray(values, numpy.float16 if kind == HALVES else numpy.float32).tobytes()


def _integers(file, *values):
    file.write(struct.pack(f"<{len(values)}i", *values))


def write(network, table, path):
    """Writes the file; `table` is the network's Tokens."""
    shape = network.shape
    with open(path, "wb") as file:
        _integers(file, MAGIC)
        _integers(file, tokens.COUNT, shape.audio_context, shape.width, shape.heads, shape.layers)
        _integers(file, shape.text_context, shape.width, shape.heads, shape.layers, front_end.BANDS, MOSTLY_BYTES)
        _integers(file, *front_end.FILTERS.shape)
        file.write(front_end.FILTERS.tobytes())
        _integers(file, len(table.texts))
        for text in table.texts:
            _integers(file, len(text))
            file.write(text)
        for name, tensor in _tensors(network, table):
            values = tensor.cpu().numpy()
            kind = _kind(name, values)
            _integers(file, values.ndim, len(name), kind)
            _integers(file, *values.shape[::-1])
            file.write(name.encode())
            file.write(_bytes_of(values, kind))
