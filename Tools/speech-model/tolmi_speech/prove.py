"""Compares the spectrum that the training makes of recordings with the one of whisper.cpp, number by number."""

import argparse
import pathlib
import subprocess
import sys
import tempfile

import numpy

from . import front_end, recordings

ROOT = pathlib.Path(__file__).resolve().parents[3]
MODEL = ROOT / "Resources/StartingModel/ggml-tolmi-starter-q8_0.bin"
# Both compute in 32 bits, in different order. The values are between -1 and 2.
MOST_DIFFERENCE = 1e-3


def _program(work):
    """Builds the program that calls whisper.cpp, if necessary."""
    source, build = work / "whisper.cpp", work / "front-end"
    if not (source / "src/whisper.cpp").exists():
        subprocess.run([ROOT / "Tools/whisper-cli/install", "--source", source], check=True)
    subprocess.run(["cmake", "-S", ROOT / "Tools/speech-model/front-end", "-B", build, f"-DWHISPER_SOURCE={source}",
                    "-DCMAKE_BUILD_TYPE=Release"], check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", build, "--target", "front-end", "--parallel"], check=True, stdout=sys.stderr)
    return build / "front-end"


def spectrum_of(program, samples):
    """whisper.cpp's spectrum, (frames, bands)."""
    with tempfile.TemporaryDirectory() as folder:
        given, made = pathlib.Path(folder) / "samples", pathlib.Path(folder) / "spectrum"
        given.write_bytes(samples.astype(numpy.float32).tobytes())
        subprocess.run([program, MODEL, given, made], check=True, stderr=subprocess.DEVNULL)
        values = made.read_bytes()
    frames, bands = numpy.frombuffer(values, numpy.int32, 2)
    return numpy.frombuffer(values, numpy.float32, offset=8).reshape(bands, frames).T


def _recordings():
    for path in sorted((ROOT / "Resources/Samples").glob("*.wav")):
        yield path.name, recordings.read(path)
    generator = numpy.random.default_rng(1)
    yield "noise of 7.3 s", 0.1 * generator.standard_normal(int(7.3 * front_end.RATE))
    yield "silence of 2 s", numpy.zeros(2 * front_end.RATE)


def main():
    parser = argparse.ArgumentParser(prog="Tools/speech-model/prove", description=__doc__)
    parser.add_argument("--work", default="speech-model-work", help="where the source and the program are kept")
    work = pathlib.Path(parser.parse_args().work).absolute()
    program = _program(work)
    worst = 0.0
    for name, samples in _recordings():
        theirs, ours = spectrum_of(program, samples), front_end.of_recording(samples).numpy()
        if theirs.shape != ours.shape:
            sys.exit(f"{name}: whisper.cpp has {theirs.shape[0]} frames, the training {ours.shape[0]}")
        difference = numpy.abs(theirs - ours)
        worst = max(worst, difference.max())
        print(f"{name}: {len(ours)} frames, at most {difference.max():.1e} apart, {difference.mean():.1e} on average")
    if worst > MOST_DIFFERENCE:
        sys.exit(f"more than {MOST_DIFFERENCE} apart")


if __name__ == "__main__":
    main()
