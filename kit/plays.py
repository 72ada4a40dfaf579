"""What zelplay does for the kit: the plays of a game, and pictures of it. No window opens."""

import os
import subprocess
import sys
import tempfile
from pathlib import Path

from companions import Complaint, program
from game import shown


def find_plays(game, names):
    folder = game.folder / "plays"
    plays = [folder / f"{name.removesuffix('.play')}.play" for name in names]
    for play in plays:
        if not play.is_file():
            raise Complaint(f"there is no {shown(play)}")
    plays = plays or sorted(folder.glob("*.play"))
    if not plays:
        raise Complaint(f"{game.name} has no plays in {shown(folder)}; a play is a text that "
                        "presses keys and looks, as docs/play.md tells")
    return plays


def run_play(game, play):
    """Plays one play and says in a line how it went, and below that why it failed."""
    command = [program("zelplay"), str(game.stage), shown(play)]
    if not os.access(play.parent, os.W_OK):  # pictures of failures go beside the play if they can
        command[1:1] = ["--output", tempfile.mkdtemp(prefix="zelkit-")]
    run = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=False)
    verdict = "ok" if run.returncode == 0 else "failed"
    print(f"{play.stem:<20} {verdict}", flush=True)
    if run.returncode != 0:
        sys.stderr.write(run.stderr.decode(errors="replace"))
        sys.stderr.flush()
    return run.returncode == 0


def test(game, names):
    """Plays these plays of a game, or all; returns whether all went well."""
    return all([run_play(game, play) for play in find_plays(game, names)])


def shoot(game, at, file):
    """Saves a picture of the window after so many milliseconds; returns whether it could."""
    target = Path(file or f"{game.name}.png").absolute()
    if target.suffix.lower() != ".png":
        raise Complaint(f"the picture is a PNG file: its name must end in .png, not {target.name}")
    if not target.parent.is_dir():
        raise Complaint(f"there is no folder {shown(target.parent)}")
    with tempfile.TemporaryDirectory(prefix="zelkit-", dir=target.parent) as scratch:
        command = [program("zelplay"), "--output", scratch, str(game.stage), "-"]
        commands = f"run {at}\npicture shot.png\n".encode()
        run = subprocess.run(command, input=commands, capture_output=True, check=False)
        picture = Path(scratch) / "shot.png"
        if run.returncode == 0 and picture.is_file():
            os.replace(picture, target)
            print(shown(target))
            return True
    for line in run.stderr.splitlines() + run.stdout.splitlines():
        if line != b"ok":
            print(line.decode(errors="replace"), file=sys.stderr)
    return False
