#!/usr/bin/env python3
"""Keys in a real window: bound, held, changed, removed."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import level_player  # noqa: E402
from level_folder import BLUE, WHITE  # noqa: E402

# Scancodes: a 4, b 5, c 6, d 7, e 8, f 9, F1 58.
SCRIPT = """
int say() { print("key "); print(getcurrentkey()); }
int other() { print("other "); print(getcurrentkey()); }
int change() { changefunckey(4, "say", "other"); print("changed"); }
int remove() { deletefunckey(4, "say"); deletefunckey(4, "other"); print("removed"); }
int once() { print("once"); deletefunckey(9, "once"); }
int move() { moveunit(0, getunitx(0) + 50, 100); }
int main()
{
    createunit(0, 100, 100);
    addexectfunckey(0, 4, "say");
    addexectfunckey(0, 5, "say");
    addexectfunckey(0, 6, "change");
    addexectfunckey(0, 7, "remove");
    addexectfunckey(0, 8, "move");
    addexectfunckey(0, 9, "once");
    addexectfunckey(0, 9, "say");
    print("ready");
}
"""


def bound_key_fires_when_pressed(game):
    game.says("\nready")
    game.tap("a", "\nkey 4")
    game.press("F1")
    game.tap("b", "\nkey 5")
    game.is_silent()


def held_key_fires_again_with_a_second_one(game):
    game.says("\nready")
    game.hold("a")
    game.says("\nkey 4")
    game.hold("b")
    game.says("\nkey 4\nkey 5")
    game.release("b")
    game.says("\nkey 4")
    game.hold("F1")
    game.says("\nkey 4")
    game.release("a")
    game.release("F1")
    game.is_silent()


def changed_key_calls_the_other_function(game):
    game.says("\nready")
    game.tap("c", "\nchanged")
    game.tap("a", "\nother 4")
    game.tap("b", "\nkey 5")
    game.is_silent()


def removed_key_is_silent(game):
    game.says("\nready")
    game.tap("d", "\nremoved")
    game.press("a")
    game.is_silent()
    game.tap("b", "\nkey 5")
    game.tap("c", "\nchanged")
    game.press("a")
    game.is_silent()


def function_that_removes_itself_skips_the_next_one_once(game):
    game.says("\nready")
    game.tap("f", "\nonce")
    game.tap("f", "\nkey 9")
    game.is_silent()


def key_moves_a_unit_on_the_screen(game):
    game.colour_becomes(107, 107, BLUE)
    game.press("e")
    game.colour_becomes(157, 107, BLUE)
    game.colour_becomes(107, 107, WHITE)
    game.press("e", "e")
    game.colour_becomes(257, 107, BLUE)


if __name__ == "__main__":
    level_player.main(
        SCRIPT, bound_key_fires_when_pressed, held_key_fires_again_with_a_second_one,
        changed_key_calls_the_other_function, removed_key_is_silent,
        function_that_removes_itself_skips_the_next_one_once, key_moves_a_unit_on_the_screen,
    )
