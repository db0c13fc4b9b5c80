"""The model's input: the mel spectrum of the sound, numerically equal to whisper.cpp's."""

import numpy
import torch

RATE = 16000
BANDS = 80
WINDOW = 400
STEP = 160
FRAMES_PER_SECOND = RATE // STEP
# Values this far (in decades of power) below the maximum are clipped.
DYNAMIC_RANGE = 8.0
FLOOR = 1e-10
# whisper.cpp appends this much silence to the whole recording.
TRAILING_SILENCE = 30 * RATE

# Slaney's mel scale: linear up to 1000 Hz, then 27 steps per factor of 6.4.
LINEAR_STEP = 200 / 3
KNEE_HZ = 1000.0
KNEE_MEL = 15.0
LOG_STEP = numpy.log(6.4) / 27


def _to_mel(hertz):
    hertz = numpy.asarray(hertz, dtype=numpy.float64)
    above = KNEE_MEL + numpy.log(numpy.maximum(hertz, 1e-9) / KNEE_HZ) / LOG_STEP
    return numpy.where(hertz < KNEE_HZ, hertz / LINEAR_STEP, above)


def _to_hertz(mel):
    mel = numpy.asarray(mel, dtype=numpy.float64)
    return numpy.where(mel < KNEE_MEL, mel * LINEAR_STEP, KNEE_HZ * numpy.exp(LOG_STEP * (mel - KNEE_MEL)))


def mel_filters():
    """The triangular filter of unit area for each band."""
    frequencies = numpy.linspace(0, RATE / 2, WINDOW // 2 + 1)
    corners = _to_hertz(numpy.linspace(_to_mel(0), _to_mel(RATE / 2), BANDS + 2))
    widths = numpy.diff(corners)
    ramps = corners[:, None] - frequencies[None]
    triangles = numpy.maximum(0, numpy.minimum(-ramps[:-2] / widths[:-1, None], ramps[2:] / widths[1:, None]))
    return (triangles * (2 / (corners[2:] - corners[:-2]))[:, None]).astype(numpy.float32)


FILTERS = mel_filters()
_TRANSPOSED = torch.from_numpy(FILTERS.T.copy())
_HANN = torch.hann_window(WINDOW, periodic=True)


def log_mel(padded, frames):
    """Decades of power, (batch, frames, bands), of sound with half a window of padding before its first sample."""
    pieces = padded.unfold(1, WINDOW, STEP)[:, :frames] * _HANN
    spectrum = torch.fft.rfft(pieces)
    power = spectrum.real ** 2 + spectrum.imag ** 2
    return torch.log10(torch.clamp(power @ _TRANSPOSED, min=FLOOR))


def scaled(mel, loudest):
    """The network's input: values clipped to the dynamic range below the maximum and scaled to about one."""
    return (torch.maximum(mel, loudest - DYNAMIC_RANGE) + 4) / 4


def of_recording(samples):
    """The spectrum of a whole recording like whisper.cpp's, (frames, bands)."""
    sound = torch.as_tensor(samples, dtype=torch.float32)
    half = WINDOW // 2
    padded = torch.cat([sound[1:half + 1].flip(0), sound, torch.zeros(TRAILING_SILENCE + half)])
    mel = log_mel(padded[None], (len(padded) - WINDOW) // STEP)[0]
    return scaled(mel, mel.max())
