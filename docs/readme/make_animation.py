#!/usr/bin/python3
"""Makes docs/readme/peons.gif, the moving picture of the README, from a play of the game peons.

    docs/readme/make_animation.py    needs a built zelplay, and python3-pil

The play's time passes in pieces of 96 milliseconds, and after each piece the frame becomes one of
the picture's. The mouse pointer is drawn into it, as the engine leaves that to the system.
"""

import re
import subprocess
import tempfile
from pathlib import Path

from PIL import Image

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
PIECE = 96  # milliseconds of a frame; GIF counts hundredths of a second
FIRST = 900  # milliseconds that are left out: the title
COLOURS = 32
POINTER = ROOT / "docs/tutorial/img/arrow.bmp"


def pieces(commands):
    """The play's commands, each `run` cut into pieces, and where the pointer is after each."""
    pointer = (320, 240)
    for command in commands:
        words = command.split()
        if words[:1] == ["run"]:
            for left in range(int(words[1]), 0, -PIECE):
                yield f"run {min(left, PIECE)}", pointer, min(left, PIECE)
        elif words and words[0] != "//":
            place = re.findall(r"\d+", command) if words[0] == "mouse" else []
            pointer = (int(place[0]), int(place[1])) if len(place) == 2 else pointer
            yield command, pointer, 0


def record(folder):
    """Plays the game. Gives for each frame its file and the place of the pointer."""
    commands, frames, time = [], [], 0
    for command, pointer, passed in pieces((HERE / "peons.play").read_text().splitlines()):
        commands.append(command)
        time += passed
        if passed and time > FIRST:
            frames.append((folder / f"{len(frames):03}.png", pointer))
            commands.append(f"picture {frames[-1][0].name}")
    (folder / "all.play").write_text("\n".join(commands) + "\n")
    subprocess.run([ROOT / "build/zelplay", "--output", folder, ROOT / "games/peons",
                    folder / "all.play"], check=True, stdout=subprocess.DEVNULL)
    return frames


def compose(frames):
    """The frames with the pointer, all with one palette."""
    arrow = Image.open(POINTER).convert("RGBA")
    palette = Image.open(frames[len(frames) // 2][0]).convert("RGB").quantize(COLOURS, dither=0)
    for path, pointer in frames:
        picture = Image.open(path).convert("RGB")
        picture.paste(arrow, pointer, arrow)
        yield picture.quantize(palette=palette, dither=0)


def main():
    with tempfile.TemporaryDirectory() as folder:
        pictures = list(compose(record(Path(folder))))
    path = HERE / "peons.gif"
    pictures[0].save(path, save_all=True, append_images=pictures[1:], duration=PIECE + 4, loop=0,
                     optimize=True)
    print(f"{path}: {len(pictures)} frames, {path.stat().st_size} bytes")


if __name__ == "__main__":
    main()
