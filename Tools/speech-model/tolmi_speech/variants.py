"""Random voice variants for espeak-ng, so that the network learns the words and not the few dozen variants that come with
espeak-ng."""

import pathlib
import random as random_module
import subprocess

# espeak-ng supports at most 350 voices in total.
COUNT = 110
# Higher formants hardly help to distinguish words, so a voice may lack them.
FORMANTS = 9
VARIANTS = "!v"
# Voices of another program, left out because the list is limited.
FOREIGN = "mb"


def _formants(random):
    # A longer vocal tract lowers all formants.
    size = random.uniform(0.84, 1.24)
    for formant in range(FORMANTS):
        missing = {3: 0.08, 4: 0.12, 5: 0.15}.get(formant, 0.3 if formant > 5 else 0)
        if random.random() < missing:
            yield f"formant {formant} 0 0 0"
            continue
        frequency = 100 * size * random.uniform(0.92, 1.09) if formant else random.uniform(80, 125)
        height = 100 * 2 ** random.uniform(-0.7, 0.7)
        width = 100 * 2 ** random.uniform(-0.6, 0.7)
        yield f"formant {formant} {frequency:.0f} {height:.0f} {width:.0f}"


def description(name, random):
    """The variant's file in espeak-ng's format."""
    pitch = 60 * 4 ** random.random()
    lines = ["language variant", f"name {name}", f"pitch {pitch:.0f} {pitch * random.uniform(1.1, 1.7):.0f}", *_formants(random)]
    if random.random() < 0.5:
        lines.append(f"flutter {random.randint(0, 8)}")
    if random.random() < 0.3:
        lines.append(f"roughness {random.randint(0, 5)}")
    if random.random() < 0.5:
        lines.append(f"voicing {random.randint(45, 160)}")
    if random.random() < 0.5:
        lines.append(f"consonants {random.randint(60, 120)} {random.randint(60, 120)}")
    if random.random() < 0.2:
        lines.append(f"breath {random.randint(0, 12)} {random.randint(0, 12)} {random.randint(0, 12)}")
    return "\n".join(lines) + "\n"


def names():
    """The suffixes for a voice's name."""
    return tuple(f"+tolmi{place:03d}" for place in range(COUNT))


def _link_all(source, target, *but):
    target.mkdir(parents=True, exist_ok=True)
    for entry in source.iterdir():
        if entry.name not in but and not (target / entry.name).exists():
            (target / entry.name).symlink_to(entry)


def installed_data():
    """espeak-ng's installed data folder."""
    version = subprocess.run(["espeak-ng", "--version"], check=True, capture_output=True, text=True).stdout
    return pathlib.Path(version.split("Data at:")[1].strip())


def make_data(folder):
    """A copy of espeak-ng's data folder with the random variants added, reproducibly."""
    installed, data = installed_data(), pathlib.Path(folder) / "espeak-ng-data"
    _link_all(installed, data, "voices")
    _link_all(installed / "voices", data / "voices", VARIANTS, FOREIGN)
    _link_all(installed / "voices" / VARIANTS, data / "voices" / VARIANTS)
    random = random_module.Random(COUNT)
    for name in names():
        (data / "voices" / VARIANTS / name[1:]).write_text(description(name[1:], random), encoding="ascii")
    return data
