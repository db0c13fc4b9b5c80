"""What the model hears: the spectrum of the sound on the mel scale, number for number as whisper.cpp makes it."""

import numpy
import torch

RATE = 16000
BANDS = 80
WINDOW = 400
STEP = 160
FRAMES_PER_SECOND = RATE // STEP
# Nothing counts that lies this far (in decades of power) below the loudest spot.
DYNAMIC_RANGE = 8.0
FLOOR = 1e-10
# The whole of what whisper.cpp looks at is followed by this much silence.
TRAILING_SILENCE = 30 * RATE

# The scale of Slaney: linear up to 1000 Hz, from there 27 steps for each factor of 6.4.
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
    """One triangle of unit area for each band, by frequency of the spectrum."""
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
    """Decades of power, (batch, frames, bands), of sound that has half a window in front of its first sample."""
    pieces = padded.unfold(1, WINDOW, STEP)[:, :frames] * _HANN
    spectrum = torch.fft.rfft(pieces)
    power = spectrum.real ** 2 + spectrum.imag ** 2
    return torch.log10(torch.clamp(power @ _TRANSPOSED, min=FLOOR))


def scaled(mel, loudest):
    """What the network gets: the spots within the dynamic range below the loudest, brought to about one."""
    return (torch.maximum(mel, loudest - DYNAMIC_RANGE) + 4) / 4


def of_recording(samples):
    """The whole of a recording as whisper.cpp hears it, (frames, bands)."""
    sound = torch.as_tensor(samples, dtype=torch.float32)
    half = WINDOW // 2
    padded = torch.cat([sound[1:half + 1].flip(0), sound, torch.zeros(TRAILING_SILENCE + half)])
    mel = log_mel(padded[None], (len(padded) - WINDOW) // STEP)[0]
    return scaled(mel, mel.max())
