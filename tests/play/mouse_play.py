#!/usr/bin/env python3
"""The mouse in a real window: picks, selection boxes in both directions, orders far and near."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import level_player  # noqa: E402
from level_folder import BLUE, MAGENTA, WHITE  # noqa: E402

SCRIPT = """
int look() { print(getunitx(0)); print(" "); print(getunity(0)); }
int place() { moveunit(1, 110, 110); print("placed"); }
int there;
int watch()
{
    if (there == 0) {
        if (getmousex() == 320) { if (getmousey() == 240) { there = 1; print("there"); } }
    }
}
int main()
{
    createunit(0, 100, 100);
    createunit(0, 300, 100);
    createtimer(0, 0, "watch");
    addexectfunckey(0, 4, "look");
    addexectfunckey(0, 5, "place");
    print("ready");
}
"""


def click_picks_the_unit_under_the_pointer(game):
    game.says("\nready")
    game.click(107, 107)
    game.says("\nChoosen=1")
    game.click(115, 115)
    game.says("\nChoosen=1")
    game.click(116, 107)
    game.click(200, 200)
    game.is_silent()


def frame_selects_what_lies_inside(game):
    game.says("\nready")
    game.drag(90, 90, 120, 120)
    game.says("\nSelected=1")
    game.drag(90, 90, 110, 110)
    game.says("\nSelected=0")
    game.drag(50, 50, 400, 200)
    game.says("\nSelected=2")
    game.is_silent()


def frame_is_seen_while_it_is_drawn(game):
    game.says("\nready")
    game.hold_frame(150, 150, 350, 250)
    game.colour_becomes(250, 200, MAGENTA)
    seen = game.picture()
    for x, y in ((153, 153), (346, 153), (153, 246), (346, 246)):
        assert seen.at(x, y) == MAGENTA, (x, y, seen.at(x, y))
    for x, y in ((147, 200), (353, 200), (250, 147), (250, 253)):
        assert seen.at(x, y) == WHITE, (x, y, seen.at(x, y))
    game.move(200, 170)
    game.colour_becomes(300, 200, WHITE)
    assert game.picture().at(180, 160) == MAGENTA
    game.xdotool("mouseup", 1)
    game.says("\nSelected=0")
    game.colour_becomes(180, 160, WHITE)


def frame_covers_units(game):
    game.hold_frame(50, 50, 200, 200)
    game.colour_becomes(107, 107, MAGENTA)
    game.xdotool("mouseup", 1)
    game.colour_becomes(107, 107, BLUE)


def frame_dragged_back_draws_nothing_and_picks(game):
    game.says("\nready")
    game.hold_frame(150, 150, 250, 250)
    game.colour_becomes(180, 180, MAGENTA)
    game.move(107, 107)
    game.colour_becomes(180, 180, WHITE)
    game.is_silent()
    seen = game.picture()
    assert seen.at(130, 130) == WHITE and seen.at(107, 107) == BLUE
    game.xdotool("mouseup", 1)
    game.says("\nChoosen=1")
    game.drag(120, 120, 90, 90)
    game.click(300, 300, button=3)
    game.tap("a", "100\n 100")
    game.is_silent()


def right_click_far_away_sends_the_unit(game):
    game.says("\nready")
    game.click(107, 107)
    game.says("\nChoosen=1")
    game.click(400, 300, button=3)
    game.colour_becomes(407, 307, BLUE)
    game.tap("a", "400\n 300")
    assert game.picture().at(107, 107) == WHITE
    game.click(50, 400, button=3)
    game.colour_becomes(57, 407, BLUE)


def right_click_nearby_leaves_the_unit(game):
    game.says("\nready")
    game.click(107, 107)
    game.says("\nChoosen=1")
    game.click(110, 105, button=3)
    game.click(115, 100, button=3)
    game.tap("a", "100\n 100")
    game.click(116, 100, button=3)
    game.colour_becomes(128, 107, BLUE)
    game.tap("a", "116\n 100")


def frame_sends_all_its_units(game):
    game.says("\nready")
    game.drag(50, 50, 400, 200)
    game.says("\nSelected=2")
    game.click(400, 300, button=3)
    game.colour_becomes(407, 307, BLUE)
    game.colour_becomes(107, 107, WHITE)
    assert game.picture().count(BLUE) == 15 * 15, "both stand on one place"


def lowest_id_is_picked_of_two(game):
    game.says("\nready")
    game.tap("b", "\nplaced")
    game.click(112, 112)
    game.says("\nChoosen=1")
    game.click(400, 300, button=3)
    game.colour_becomes(407, 307, BLUE)
    game.tap("a", "400\n 300")


def other_buttons_do_nothing(game):
    game.says("\nready")
    game.click(107, 107, button=2)
    game.click(107, 107, button=3)
    game.is_silent()


def pointer_is_told_to_the_script(game):
    game.says("\nready")
    game.move(320, 239)
    game.is_silent()
    game.move(320, 240)
    game.says("\nthere")


if __name__ == "__main__":
    level_player.main(
        SCRIPT, click_picks_the_unit_under_the_pointer, frame_selects_what_lies_inside,
        frame_is_seen_while_it_is_drawn, frame_covers_units,
        frame_dragged_back_draws_nothing_and_picks, right_click_far_away_sends_the_unit,
        right_click_nearby_leaves_the_unit, frame_sends_all_its_units, lowest_id_is_picked_of_two,
        other_buttons_do_nothing, pointer_is_told_to_the_script,
    )
