"""Tokens of the script language, as a pure function of the position.

Part of the independent model: nothing here is derived from the engine's sources. The text never
changes while a script runs, so every token is computed once per position and remembered.
"""

from collections import namedtuple

# Token kinds.
DELIMITER, IDENTIFIER, NUMBER, KEYWORD, STRING, BLOCK = 0, 1, 2, 3, 5, 6

# Keyword codes; FINISHED marks the end of the text.
CHAR, INT, IF, ELSE, FOR, DO, WHILE, RETURN, FINISHED, END = 1, 2, 3, 4, 5, 6, 7, 9, 11, 12

KEYWORDS = {
    b"if": IF, b"else": ELSE, b"for": FOR, b"do": DO, b"while": WHILE,
    b"char": CHAR, b"int": INT, b"return": RETURN, b"end": END,
}

# Two-character operators first: the first match wins. The token text is the code, once per
# source character, so that stepping back by the text length steps over the source.
RELATIONAL = (
    (b"<=", b"\2\2"), (b"<", b"\1"), (b">=", b"\4\4"),
    (b">", b"\3"), (b"==", b"\5\5"), (b"!=", b"\6\6"),
)

DELIMITERS = frozenset(b"+-*^/%=;(),'")
WORD_ENDS = frozenset(b" !;,+-<>'/*%^=()\t\r\0")
DIGITS = frozenset(b"0123456789")
LETTERS = frozenset(b"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ")
BLANKS = frozenset(b" \t")

CR, LF, QUOTE = 13, 10, 34
LONGEST_TOKEN = 79

# Errors the lexer raises.
SYNTAX_ERROR, TOKEN_TOO_LONG, COMMENT_NOT_CLOSED = 0, 20, 21

# after: position of the character that follows the token.
Token = namedtuple("Token", "kind code text after")


class LexError(Exception):
    """A token that cannot be read: the error code and the position it is reported at."""

    def __init__(self, code, position):
        super().__init__(code, position)
        self.code = code
        self.position = position


class Lexer:
    """Reads tokens of one program text, which ends at its first zero byte."""

    def __init__(self, text):
        self.end = text.find(b"\0") if b"\0" in text else len(text)
        # Zeros enough for every look-ahead from the furthest position, which is end + 1.
        self.bytes = text[:self.end] + b"\0\0\0\0"
        self.known = {}

    def token_at(self, position):
        """The token that starts at a position, blanks and comments before it skipped."""
        found = self.known.get(position)
        if found is None:
            found = self.known[position] = self.scan(position)
        return found

    def skip_blanks(self, position):
        while self.bytes[position] in BLANKS:
            position += 1
        return position

    def scan(self, position):
        position = self.skip_blanks(position)
        if self.bytes[position] == CR:
            # Whatever follows the carriage return is skipped with it, unseen.
            position = self.skip_blanks(min(position + 2, self.end + 1))
        char = self.bytes[position]
        if char == 0:
            return Token(DELIMITER, FINISHED, b"", position)
        if char in b"{}":
            return Token(BLOCK, 0, bytes([char]), position + 1)
        if self.bytes.startswith(b"/*", position):
            position = self.after_block_comment(position)
        elif self.bytes.startswith(b"//", position):
            position = self.bytes.find(b"\n", position) + 1
            if position == 0:
                return Token(DELIMITER, FINISHED, b"", self.end)
        return self.scan_plain(position)

    def after_block_comment(self, position):
        close = self.bytes.find(b"*/", position + 2)
        if close < 0:
            raise LexError(COMMENT_NOT_CLOSED, self.end)
        return close + 2

    def scan_plain(self, position):
        """A token that is neither blank, block character nor comment, also right after one."""
        for source, text in RELATIONAL:
            if self.bytes.startswith(source, position):
                return Token(DELIMITER, 0, text, position + len(source))
        char = self.bytes[position]
        if char == 0:  # The zero counts as a delimiter with an empty text.
            return Token(DELIMITER, 0, b"", position + 1)
        if char in DELIMITERS:
            return Token(DELIMITER, 0, bytes([char]), position + 1)
        if char == QUOTE:
            return self.scan_string(position + 1)
        if char in DIGITS:
            text = self.scan_word(position)
            return Token(NUMBER, 0, text, position + len(text))
        if char in LETTERS:
            text = self.scan_word(position).lower()
            code = KEYWORDS.get(text, 0)
            return Token(KEYWORD if code else IDENTIFIER, code, text, position + len(text))
        return Token(DELIMITER, 0, b"", position)

    def scan_string(self, start):
        position = start
        while self.bytes[position] != QUOTE:
            if self.bytes[position] == CR or position >= self.end:
                raise LexError(SYNTAX_ERROR, position)
            self.check_length(start, position)
            position += 1
        return Token(STRING, 0, self.bytes[start:position], position + 1)

    def scan_word(self, start):
        position = start
        while self.bytes[position] not in WORD_ENDS:
            self.check_length(start, position)
            position += 1
        return self.bytes[start:position]

    @staticmethod
    def check_length(start, position):
        if position - start >= LONGEST_TOKEN:
            raise LexError(TOKEN_TOO_LONG, position)
