"""Synthetic speech with word and phoneme timings, through the espeak-ng library."""

import ctypes
import dataclasses
import functools
import os

import numpy

LIBRARY = "libespeak-ng.so.1"
# Constants of the library's API.
SYNCHRONOUS_PLAYBACK_NONE = 1
PHONEME_EVENTS = 1
EVENT_END, EVENT_WORD, EVENT_PHONEME = 0, 1, 7
CHARACTERS_UTF8 = 1
RATE, VOLUME, PITCH, PITCH_RANGE = 1, 2, 3, 4
BLOCK_MILLISECONDS = 1000


class _Id(ctypes.Union):
    _fields_ = [("number", ctypes.c_int), ("name", ctypes.c_char_p), ("string", ctypes.c_char * 8)]


class _Event(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("identifier", ctypes.c_uint), ("text_position", ctypes.c_int),
                ("length", ctypes.c_int), ("audio_position", ctypes.c_int), ("sample", ctypes.c_int),
                ("user_data", ctypes.c_void_p), ("id", _Id)]


_Callback = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.POINTER(ctypes.c_short), ctypes.c_int, ctypes.POINTER(_Event))


@dataclasses.dataclass(frozen=True)
class Manner:
    """How a sentence is spoken: voice name, words per minute, and 0 to 100 for the others."""

    voice: str
    rate: int = 160
    pitch: int = 50
    pitch_range: int = 50


@dataclasses.dataclass
class Speech:
    """Samples at the library's rate; words as (first character, seconds); sounds as (name, seconds)."""

    samples: numpy.ndarray
    words: list
    sounds: list


class Synthesizer:
    """One per process, because the library has global state. `data` is its data folder, None for the installed one."""

    def __init__(self, data=None):
        self._library = ctypes.CDLL(LIBRARY)
        path = os.fsencode(data) if data else None
        self.rate = self._library.espeak_Initialize(SYNCHRONOUS_PLAYBACK_NONE, BLOCK_MILLISECONDS, path, PHONEME_EVENTS)
        if self.rate <= 0:
            raise RuntimeError("espeak-ng could not be started")
        self._blocks, self._words, self._sounds = [], [], []
        # Keeps a reference, because the library stores only the address.
        self._callback = _Callback(self._take)
        self._library.espeak_SetSynthCallback(self._callback)

    def _take(self, samples, count, events):
        if samples and count > 0:
            self._blocks.append(numpy.ctypeslib.as_array(samples, (count,)).copy())
        for event in events:
            if event.type == EVENT_END:
                return 0
            seconds = event.audio_position / 1000
            if event.type == EVENT_WORD and event.length > 0:
                self._words.append((event.text_position - 1, seconds))
            elif event.type == EVENT_PHONEME:
                name = bytes(event.id.string).split(b"\0")[0].decode("utf-8", "replace")
                self._sounds.append((name, seconds))
        return 0

    def say(self, text, manner):
        """Raises ValueError for a voice that is not installed."""
        if self._library.espeak_SetVoiceByName(manner.voice.encode()) != 0:
            raise ValueError(f"espeak-ng has no voice {manner.voice}")
        for parameter, value in ((RATE, manner.rate), (PITCH, manner.pitch), (PITCH_RANGE, manner.pitch_range),
                                 (VOLUME, 100)):
            self._library.espeak_SetParameter(parameter, value, 0)
        self._blocks, self._words, self._sounds = [], [], []
        written = text.encode()
        self._library.espeak_Synth(written, len(written) + 1, 0, 1, 0, CHARACTERS_UTF8, None, None)
        self._library.espeak_Synchronize()
        samples = numpy.concatenate(self._blocks) if self._blocks else numpy.zeros(0, numpy.int16)
        return Speech(samples, self._words, self._sounds)


@functools.lru_cache(maxsize=1)
def synthesizer(data):
    """The synthesizer of this process: the library hangs if initialised twice."""
    return Synthesizer(data)
