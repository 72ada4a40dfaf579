#!/usr/bin/env python3
"""How a play ends: by the window manager, by Ctrl-C, by the script; for both kinds of ticks."""

import signal
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import level_player  # noqa: E402
from level_folder import BLUE  # noqa: E402
from process import check_lives_on, has_ended, until, wait_until_uncaught  # noqa: E402

SCRIPT = """
int last() { print("last"); }
int leave() { print("leaving"); exitgame(); print("left"); }
int later() { print("timer"); exitgame(); print("left"); }
int arm() { createtimer(1, 500, "later"); }
int hang() { print("hanging"); getche(); while (1) { } }
int finish() { print("end"); end; }
int main()
{
    createunit(0, 100, 100);
    createtext("words", 20, 20, 300, 30);
    addexectfunckey(0, 4, "last");
    addexectfunckey(0, 5, "leave");
    addexectfunckey(0, 6, "arm");
    addexectfunckey(0, 7, "hang");
    addexectfunckey(0, 8, "finish");
    print("ready");
}
"""


def closed_by_the_window_manager(game):
    game.says("\nready")
    game.tap("a", "\nlast")
    game.xdotool("key", "alt+F4")  # the window manager asks the window to close
    game.ends_with(0)


def interrupted(game):
    game.says("\nready")
    game.game.send_signal(signal.SIGINT)
    game.ends_with(0)


def terminated(game):
    game.says("\nready")
    game.game.send_signal(signal.SIGTERM)
    game.ends_with(0)


def hanging_script_ends_at_the_second_interrupt(game):
    game.says("\nready")
    game.hold("d")
    game.says("\nhanging")
    game.game.send_signal(signal.SIGINT)
    wait_until_uncaught(game.game, signal.SIGINT)
    assert not has_ended(game.game), "the first one only asks the loop"
    game.game.send_signal(signal.SIGINT)
    game.ends_with(-signal.SIGINT)


def window_is_gone(game):
    found = subprocess.run(
        ["xwininfo", "-id", game.window], env=game.environment, capture_output=True, check=False
    )
    return found.returncode != 0


def lives_on_until_stopped(game):
    """After exitgame: no window, the process alive and stoppable, nothing more printed."""
    until(lambda: window_is_gone(game), "the window to go")
    wait_until_uncaught(game.game, signal.SIGTERM)
    check_lives_on(game.game)
    game.game.send_signal(signal.SIGTERM)
    game.ends_with(-signal.SIGTERM)


def left_by_a_key(game):
    game.says("\nready")
    game.colour_becomes(107, 107, BLUE)
    game.xdotool("keydown", "b")
    game.says("\nleaving\nleft")
    lives_on_until_stopped(game)


def left_by_a_timer(game):
    game.says("\nready")
    game.hold("c")
    game.says("\ntimer\nleft")
    lives_on_until_stopped(game)


def ended_by_the_script(game):
    game.says("\nready")
    game.hold("e")
    game.says("\nend")
    game.ends_with(0)


if __name__ == "__main__":
    level_player.main(
        SCRIPT, closed_by_the_window_manager, interrupted, terminated,
        hanging_script_ends_at_the_second_interrupt, left_by_a_key, left_by_a_timer,
        ended_by_the_script,
    )
    level_player.main(
        SCRIPT, closed_by_the_window_manager, interrupted, left_by_a_key, left_by_a_timer, ticks=""
    )
