#!/usr/bin/env python3
"""What a player sees: texts in their colour and font, layers, the title, full screen."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "support"))
import level_player  # noqa: E402
from level_folder import BLUE, GREEN, GREY, MAGENTA, RED, WHITE  # noqa: E402
from process import until  # noqa: E402

# The block is a character cell full of ink: its middle shows the colour of texts unmixed.
SCRIPT = """
int red() { changeallcolorfont(255, 0, 0); }
int big() { changeallfont("arial.ttf", 60); print("big"); }
int none() { changeallfont("none.ttf", 60); }
int hide() { hidetext(0, 1); }
int title() { changewindowname("Level 2"); }
int full() { fullscreen(4097); }
int back() { fullscreen(0); }
int mode() { fullscreen(1); }
int main()
{
    loadimage("red.bmp");
    loadimage("green.bmp");
    moveimage(0, 200, 200);
    moveimage(1, 225, 225);
    showimage(0, 1);
    showimage(1, 1);
    createtext("\u2588", 240, 240, 100, 80);
    deletetimer(99);
    createtext("Wide words in a row", 20, 20, 300, 30);
    createunit(0, 300, 280);
    addexectfunckey(0, 4, "red");
    addexectfunckey(0, 5, "big");
    addexectfunckey(0, 6, "none");
    addexectfunckey(0, 7, "hide");
    addexectfunckey(0, 8, "title");
    addexectfunckey(0, 9, "full");
    addexectfunckey(0, 10, "back");
    addexectfunckey(0, 11, "mode");
    print("ready");
}
"""


def layers_cover_each_other(game):
    game.says("\nready")
    game.colour_becomes(290, 270, GREY)
    seen = game.picture()
    assert seen.at(210, 210) == RED
    assert seen.at(232, 232) == GREEN, "the image loaded later is above"
    assert seen.at(265, 265) == GREY, "texts are above images"
    assert seen.at(307, 287) == BLUE, "units are above texts"
    assert seen.at(500, 100) == WHITE
    game.hold_frame(303, 283, 450, 400)
    game.colour_becomes(400, 350, MAGENTA)
    seen = game.picture()
    assert seen.at(310, 290) == MAGENTA, "the selection box is above units"
    assert seen.at(320, 300) == MAGENTA, "and above texts"
    assert seen.at(301, 281) == BLUE
    game.xdotool("mouseup", 1)


def words(seen):
    """The pixels of the words, as (red, green, blue) each: those of their rectangle with ink."""
    area = seen.area(20, 20, 300, 30)
    pixels = zip(area[0::3], area[1::3], area[2::3])
    return [pixel for pixel in pixels if pixel != WHITE]


def text_stands_in_its_place_and_colour(game):
    game.colour_becomes(290, 270, GREY)
    seen = game.picture()
    assert len(words(seen)) > 500, "no words at their place"
    assert all(r == g == b for r, g, b in words(seen)), "grey and white mixed, nothing else"
    outside = seen.area(0, 0, 640, 18) + seen.area(0, 52, 640, 100) + seen.area(330, 20, 300, 30)
    assert outside == bytes([255]) * len(outside), "words beside their place"
    game.press("a")
    game.colour_becomes(290, 270, RED)
    mixed = words(game.picture())
    assert sum(r > g + 100 and g == b for r, g, b in mixed) > 300, "old texts take it too"
    assert not any(abs(r - 100) < 3 and abs(g - 100) < 3 for r, g, b in mixed), "grey is left"


def changed_font_changes_the_letters(game):
    game.colour_becomes(290, 270, GREY)
    before = game.picture().area(20, 20, 300, 30)
    game.tap("b", "\nready\nbig")
    game.see(lambda seen: seen.area(20, 20, 300, 30) != before, what="other letters")
    bigger = game.picture()
    assert len(words(bigger)) > 500
    assert bigger.area(0, 52, 640, 100) == bytes([255]) * (640 * 100 * 3), "same rectangle"


def missing_font_leaves_the_letters(game):
    game.says("\nready")
    game.colour_becomes(290, 270, GREY)
    before = game.picture().area(20, 20, 300, 30)
    game.tap("c", "Cant load none.ttf font!")
    game.is_silent()
    assert game.picture().area(20, 20, 300, 30) == before


def hidden_text_disappears(game):
    game.colour_becomes(290, 270, GREY)
    game.press("d")
    game.colour_becomes(290, 270, WHITE)
    assert len(words(game.picture())) > 500, "the other text stays"


def title_changes(game):
    game.says("\nready")
    assert game.title() == "Zel", game.title()
    game.press("e")
    until(lambda: game.title() == "Zel - Level 2", "the title")


def size_becomes(game, width, height):
    until(lambda: game.find_corner() == (width, height), f"{width} by {height}")


def full_screen_and_back(game):
    game.says("\nready")
    assert game.find_corner() == (640, 480)
    game.press("f")
    size_becomes(game, 800, 600)
    assert (game.left, game.top) == (0, 0)
    game.press("g")
    size_becomes(game, 640, 480)
    game.see(lambda seen: seen.at(210, 210) == RED, what="the level in its window")


def video_mode_and_back(game):
    game.says("\nready")
    game.press("h")
    until(lambda: game.find_corner() and (game.left, game.top) == (0, 0), "full screen")
    game.press("g")
    size_becomes(game, 640, 480)
    until(lambda: game.find_corner() and game.top > 0, "the window's frame")
    game.see(lambda seen: seen.at(210, 210) == RED, what="the level in its window")


if __name__ == "__main__":
    level_player.main(
        SCRIPT, layers_cover_each_other, text_stands_in_its_place_and_colour,
        changed_font_changes_the_letters, missing_font_leaves_the_letters, hidden_text_disappears,
        title_changes, full_screen_and_back, video_mode_and_back,
    )
