"""Capital letters and digits of 5 by 7 pixels, for the lettering in the games' pictures."""

from pixel_art import blank, colour, enlarge, fill_rect, paste, put, size

GLYPHS = {
    "0": "01110 10001 10011 10101 11001 10001 01110",
    "1": "00100 01100 00100 00100 00100 00100 01110",
    "2": "01110 10001 00001 00110 01000 10000 11111",
    "3": "11110 00001 00001 01110 00001 00001 11110",
    "4": "00010 00110 01010 10010 11111 00010 00010",
    "5": "11111 10000 11110 00001 00001 10001 01110",
    "6": "01110 10000 10000 11110 10001 10001 01110",
    "7": "11111 00001 00010 00100 00100 01000 01000",
    "8": "01110 10001 10001 01110 10001 10001 01110",
    "9": "01110 10001 10001 01111 00001 00001 01110",
    "A": "01110 10001 10001 11111 10001 10001 10001",
    "B": "11110 10001 10001 11110 10001 10001 11110",
    "C": "01110 10001 10000 10000 10000 10001 01110",
    "D": "11110 10001 10001 10001 10001 10001 11110",
    "E": "11111 10000 10000 11110 10000 10000 11111",
    "F": "11111 10000 10000 11110 10000 10000 10000",
    "G": "01110 10001 10000 10111 10001 10001 01110",
    "H": "10001 10001 10001 11111 10001 10001 10001",
    "I": "01110 00100 00100 00100 00100 00100 01110",
    "J": "00111 00010 00010 00010 00010 10010 01100",
    "K": "10001 10010 10100 11000 10100 10010 10001",
    "L": "10000 10000 10000 10000 10000 10000 11111",
    "M": "10001 11011 10101 10101 10001 10001 10001",
    "N": "10001 11001 10101 10011 10001 10001 10001",
    "O": "01110 10001 10001 10001 10001 10001 01110",
    "P": "11110 10001 10001 11110 10000 10000 10000",
    "Q": "01110 10001 10001 10001 10101 10010 01101",
    "R": "11110 10001 10001 11110 10100 10010 10001",
    "S": "01111 10000 10000 01110 00001 00001 11110",
    "T": "11111 00100 00100 00100 00100 00100 00100",
    "U": "10001 10001 10001 10001 10001 10001 01110",
    "V": "10001 10001 10001 10001 10001 01010 00100",
    "W": "10001 10001 10001 10101 10101 11011 10001",
    "X": "10001 10001 01010 00100 01010 10001 10001",
    "Y": "10001 10001 01010 00100 00100 00100 00100",
    "Z": "11111 00001 00010 00100 01000 10000 11111",
    "!": "00100 00100 00100 00100 00100 00000 00100",
    " ": "00000 00000 00000 00000 00000 00000 00000",
}


def write(picture, text, x, y, letter):
    """Writes a line of text on a picture; its upper left pixel is x, y."""
    for character in text:
        for row, bits in enumerate(GLYPHS[character].split()):
            for column, bit in enumerate(bits):
                if bit == "1":
                    put(picture, x + column, y + row, colour(letter))
        x += 6


def lettering(text, upper, lower, outline="k"):
    """A line of text as a picture of its own: two colours, one over the other, and an outline."""
    picture = blank(6 * len(text) + 1, 9)
    for x, y in ((0, 0), (1, 0), (2, 0), (0, 1), (2, 1), (0, 2), (1, 2), (2, 2)):
        write(picture, text, x, y, outline)
    face = blank(6 * len(text) + 1, 9)
    write(face, text, 1, 1, upper)
    shade = blank(6 * len(text) + 1, 9)
    write(shade, text, 1, 1, lower)
    face[5:] = shade[5:]
    paste(picture, face, 0, 0)
    return picture


def sign(text, upper, lower, rim):
    """A board with lettering, for the screens before and after the game."""
    letters = lettering(text, upper, lower)
    width = size(letters)[0] + 8
    picture = blank(width, 17, "k")
    fill_rect(picture, 1, 1, width - 2, 15, rim)
    fill_rect(picture, 2, 2, width - 4, 13, "k")
    for x in (0, width - 1):
        for y in (0, 16):
            put(picture, x, y, colour("."))
    paste(picture, letters, 4, 4)
    return enlarge(picture, 5)
