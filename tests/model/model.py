"""An independent model of the script interpreter, the oracle of the differential tests.

run() tells what the engine prints and how it ends, from loading a script to the end of its
main(). The model is written from the description of the language alone, one operation for one
operation, and shares nothing with the engine: where the two differ, one of them is wrong.

What the description leaves open is marked in the outcome and not compared: see Outcome.
"""

import signal
import sys
from collections import namedtuple

from lexer import (BLOCK, CHAR, COMMENT_NOT_CLOSED, DELIMITER, DO, ELSE, END, FINISHED, FOR,
                   IDENTIFIER, IF, INT, Lexer, LexError, LF, NUMBER, RETURN, STRING,
                   TOKEN_TOO_LONG, WHILE)

# How a run ends:
#   done         main() came to its end; the engine goes on into its loop, status 0 on quitting
#   error        an error left main(); the engine goes on likewise
#   load-failed  an error while loading; the engine shuts down with status 0
#   exit         the process ends at once with `status`
#   signal       the process dies of signal -`status`
#   load-hang    loading never ends, standard output stays empty
#   hang         main() never ends; what was printed may still be buffered
#   budget       not followed to its end (too long, too deep, or left open): not comparable
# loose: None, or the span (start, end) of stdout that holds the line number and the context of
# an error report whose exact position is not fixed.
Outcome = namedtuple("Outcome", "kind stdout status loose")

CAPACITY = 10000  # of the program buffer, with its terminating zero
FUNCTIONS = GLOBALS = 100
DEEPEST = 2500  # nothing is promised much above; the engine allows 3,000 at least
ARGUMENTS = 32
LOCALS = 201
CALLS = 101
LONGEST_NAME = 30

TOO_MANY_FUNCTIONS, TOO_MANY_GLOBALS, TOO_MANY_ARGUMENTS = 18, 19, 23

MESSAGES = {
    0: "Syntax error",
    2: "выражение отсутствует",
    4: "None variable",
    6: "Cant find ';'",
    8: "Cant find this function",
    9: "ожидается спецификатор типа",
    10: "Too many exuct function in argument",
    11: "'return' is not in function",
    12: "Waiting '()'",
    13: "Waiting while",
    14: "Waiting closing '\"'",
    16: "Too many local variables",
    17: "X/0 Delenie na NULL",
    TOO_MANY_FUNCTIONS: "Too many functions",
    TOO_MANY_GLOBALS: "Too many global variables",
    TOKEN_TOO_LONG: "Token is too long",
    COMMENT_NOT_CLOSED: "Comment is not closed",
    TOO_MANY_ARGUMENTS: "Too many arguments",
}
NO_FIXED_POSITION = {TOO_MANY_FUNCTIONS, TOO_MANY_GLOBALS, COMMENT_NOT_CLOSED,
                     TOO_MANY_ARGUMENTS}

COMPARISONS = {
    1: lambda a, b: a < b, 2: lambda a, b: a <= b, 3: lambda a, b: a > b,
    4: lambda a, b: a >= b, 5: lambda a, b: a == b, 6: lambda a, b: a != b,
}

# Known to the engine but outside this model: they need a window, timers or pictures.
OTHER_BUILTINS = frozenset(
    b"showimage moveimage getimagex getimagey changesizeimage loadimage createtimer "
    b"addexectfunckey changewindowname fullscreen pausetimer deletetimer getlasttimer "
    b"getcurrenttimer getcurrentkey changefunckey deletefunckey exitgame getmousex getmousey "
    b"changeallfont changeallcolorfont createtext deletetext hidetext getlastgametext "
    b"movegametext getgametextx getgametexty setgametextwh createunit moveunit getunitx getunity "
    b"getlastcreatedunit".split())


class ScriptError(Exception):
    """An error report is due."""

    def __init__(self, code, loose=False):
        super().__init__(code)
        self.code = code
        self.loose = loose


class ProcessEnd(Exception):
    """The process ends here: kind "exit" or "signal", and its status."""

    def __init__(self, kind, status):
        super().__init__(kind, status)
        self.kind = kind
        self.status = status


class Hang(Exception):
    """The engine never gets past this point."""


class OutOfBudget(Exception):
    """The run is too long or too deep, or goes where nothing is promised."""


def wrap(value):
    """The signed 32-bit value with the same low 32 bits."""
    return ((value + 0x80000000) & 0xFFFFFFFF) - 0x80000000


def quotient(left, right):
    """Division truncating toward zero."""
    size = abs(left) // abs(right)
    return wrap(size if (left < 0) == (right < 0) else -size)


def number_value(text):
    """Leading decimal digits, clamped to 64 bits, then cut to 32."""
    digits = 0
    while digits < len(text) and text[digits:digits + 1].isdigit():
        digits += 1
    return wrap(min(int(text[:digits] or b"0"), 2 ** 63 - 1))


def signed_byte(byte):
    return byte - 256 if byte > 127 else byte


def program_text(script):
    """What reading the script file leaves in the program buffer."""
    stored = (script + b"\xff")[:CAPACITY]
    last = len(stored) - 1
    if last > 0 and stored[last - 1] == 26:
        last -= 1
    return stored[:last]


class Tokens:
    """The current token and the position: everything that reads the text goes through here."""

    def __init__(self, script, budget):
        self.lexer = Lexer(program_text(script))
        self.bytes = self.lexer.bytes
        self.end = self.lexer.end
        self.position = 0
        self.kind = self.code = 0
        self.text = b""
        self.budget = budget

    def get_token(self):
        self.budget -= 1
        if self.budget < 0:
            raise OutOfBudget
        try:
            self.kind, self.code, self.text, self.position = \
                self.lexer.token_at(self.position)
        except LexError as error:
            self.position = error.position
            raise ScriptError(error.code) from None

    def get_token_of_walk(self):
        """A token of a walk that ends only on a brace or parenthesis: it may never end."""
        before = self.position
        self.get_token()
        if self.code == FINISHED or self.is_stuck(before):
            raise Hang

    def is_stuck(self, before):
        """An empty token that did not move the position: every further one is the same."""
        empty = self.kind == DELIMITER and self.text == b"" and self.code != FINISHED
        return empty and self.position == before

    def put_back(self):
        self.position -= len(self.text)

    def at(self, text):
        return self.text == text and self.kind in (DELIMITER, BLOCK)

    def require(self, text, code):
        if not self.at(text):
            raise ScriptError(code)

    def step(self, count=1):
        self.position = min(self.position + count, self.end + 1)

    def step_past_parenthesis(self):
        close = self.bytes.find(b")", self.position)
        self.position = close + 1 if close >= 0 else max(self.position, self.end)


class Variables(Tokens):
    """Functions, globals, locals and active calls."""

    def __init__(self, script, budget):
        super().__init__(script, budget)
        self.functions = []  # (name, location): location is just after the "("
        self.globals = []  # [name, value]
        self.locals = []  # [name, value]
        self.calls = []  # base of each active call in locals
        self.return_value = 0

    def find_function(self, name):
        for known, location in self.functions:
            if known == name:
                return location
        return None

    def find_record(self, name):
        base = self.calls[-1] if self.calls else 0
        for index in range(len(self.locals) - 1, base - 1, -1):
            if self.locals[index][0] == name:
                return self.locals[index]
        for record in self.globals:
            if record[0] == name:
                return record
        return None

    def variable(self, name):
        record = self.find_record(name)
        if record is None:
            raise ScriptError(4)
        return record

    def push_local(self, name, value, loose=False):
        if len(self.locals) >= LOCALS:
            raise ScriptError(16, loose)
        self.locals.append([name, value])

    def push_call(self, base):
        if len(self.calls) >= CALLS:
            raise ScriptError(10)
        self.calls.append(base)

    def name_token(self):
        """The current token as a name, whatever its kind."""
        if len(self.text) > LONGEST_NAME:
            self.out += b"Name is too long: " + self.text + b"\n"
            raise ProcessEnd("signal", -signal.SIGABRT)
        return self.text


class Evaluator(Variables):
    """Expressions. Each level starts on its first token and ends on the first it cannot use."""

    def __init__(self, script, stdin, budget):
        super().__init__(script, budget)
        self.out = bytearray()
        self.stdin = stdin
        self.stdin_used = 0
        self.depth = 0
        self.console = {
            b"getche": self.getche, b"putch": self.eval_putch, b"puts": self.eval_puts,
            b"print": self.eval_print, b"getnum": self.getnum,
        }

    def enter(self):
        self.depth += 1
        if self.depth > DEEPEST:
            raise OutOfBudget

    def leave(self):
        self.depth -= 1

    def eval_expression(self):
        self.get_token()
        if self.text == b"":
            raise ScriptError(2)
        if self.at(b";"):
            return 0
        value = self.eval_assign()
        self.put_back()
        return value

    def eval_assign(self):
        self.enter()
        value = self.eval_assign_body()
        self.leave()
        return value

    def eval_assign_body(self):
        if self.kind == IDENTIFIER and self.find_record(self.text) is not None:
            name, kind = self.text, self.kind
            self.get_token()
            if self.at(b"="):
                self.get_token()
                value = self.eval_assign()
                self.variable(name)[1] = value
                return value
            self.put_back()
            self.text, self.kind = name, kind
        return self.eval_relational()

    def eval_relational(self):
        value = self.eval_add_sub()
        # An empty token matches too: one operand more is read and its value dropped.
        operator = self.text[0] if self.text else 0
        if operator == 0 or (operator in COMPARISONS and self.kind == DELIMITER):
            self.get_token()
            right = self.eval_add_sub()
            if operator:
                value = int(COMPARISONS[operator](value, right))
        return value

    def eval_add_sub(self):
        value = self.eval_mul_div()
        while self.at(b"+") or self.at(b"-"):
            operator = self.text
            self.get_token()
            right = self.eval_mul_div()
            value = wrap(value + right if operator == b"+" else value - right)
        return value

    def eval_mul_div(self):
        value = self.eval_unary()
        while self.at(b"*") or self.at(b"/") or self.at(b"%"):
            operator = self.text
            self.get_token()
            right = self.eval_unary()
            value = self.multiplied(operator, value, right)
        return value

    @staticmethod
    def multiplied(operator, value, right):
        if operator == b"*":
            return wrap(value * right)
        if operator == b"/":
            if right == 0:
                raise ScriptError(17)
            return quotient(value, right)
        if right == 0:
            raise ProcessEnd("signal", -signal.SIGFPE)
        return wrap(value - quotient(value, right) * right)

    def eval_unary(self):
        sign = self.text
        if self.at(b"-") or self.at(b"+"):
            self.get_token()
            value = self.eval_paren()
            return wrap(-value) if sign == b"-" else value
        return self.eval_paren()

    def eval_paren(self):
        if not self.at(b"("):
            return self.atom()
        self.get_token()
        value = self.eval_assign()
        self.require(b")", 12)
        self.get_token()
        return value

    def atom(self):
        if self.kind == IDENTIFIER:
            value = self.named_value()
        elif self.kind == NUMBER:
            value = number_value(self.text)
        elif self.at(b"'"):
            value = self.char_literal()
        elif self.at(b")"):
            return 0
        else:
            raise ScriptError(0)
        self.get_token()
        return value

    def named_value(self):
        if self.text in self.console:
            return self.console[self.text]()
        if self.text in OTHER_BUILTINS:
            raise OutOfBudget
        if self.find_function(self.text) is not None:
            self.call_function()
            return self.return_value
        return self.variable(self.text)[1]

    def char_literal(self):
        if self.bytes[self.position + 1:self.position + 2] != b"'":
            raise ScriptError(14)
        value = signed_byte(self.bytes[self.position])
        self.step(2)
        return value

    # Console built-ins ------

    def getche(self):
        byte = self.stdin[self.stdin_used:self.stdin_used + 1]
        self.stdin_used += 1
        self.step_past_parenthesis()
        return signed_byte(byte[0]) if byte else -1

    def getnum(self):
        self.step_past_parenthesis()
        return 0

    def eval_putch(self):
        value = self.eval_expression()
        self.out += b"%d" % value
        return value

    def open_arguments(self):
        self.get_token()
        self.require(b"(", 12)

    def close_statement(self):
        self.get_token()
        self.require(b")", 12)
        self.get_token()
        self.require(b";", 6)
        self.put_back()

    def eval_puts(self):
        self.open_arguments()
        self.get_token()
        if self.kind != STRING:
            raise ScriptError(14)
        self.out += self.text + b"\n"
        self.close_statement()
        return 0

    def eval_print(self):
        self.open_arguments()
        self.get_token()
        if self.kind == STRING:
            self.out += b"\n" + self.text
        else:
            self.put_back()
            self.out += b"%d" % self.eval_expression()
        self.close_statement()
        return 0


class Machine(Evaluator):
    """Statements, calls, loading and the run of main()."""

    def call_function(self):
        """Calls the function named by the current token; the position is at its "("."""
        self.enter()
        location = self.find_function(self.text)
        if location is None:
            raise ScriptError(8)
        base = len(self.locals)
        self.get_args()
        back = self.position
        self.push_call(base)
        self.position = location
        self.get_params(base)
        self.interpret_block()
        self.position = back
        del self.locals[self.calls.pop():]
        self.leave()

    def get_args(self):
        self.get_token()
        self.require(b"(", 12)
        values = []
        while True:
            if len(values) == ARGUMENTS:
                raise ScriptError(TOO_MANY_ARGUMENTS)
            values.append(self.eval_expression())
            self.get_token()
            if not self.at(b","):
                break
        for value in reversed(values):
            self.push_local(b"", value)

    def get_params(self, base):
        index = len(self.locals) - 1
        names = []
        while True:
            self.get_token()
            if self.at(b")"):
                return
            if self.code not in (CHAR, INT):
                raise ScriptError(9)
            self.get_token()
            self.name_param(index, base, names)
            index -= 1
            self.get_token()
            if self.at(b")"):
                return
            self.require(b",", 12)

    def name_param(self, index, base, names):
        name = self.name_token()
        known = b"" if name in names else name  # of two parameters with one name the first counts
        if index >= base:
            self.locals[index][0] = known
        else:
            self.push_local(known, 0, loose=True)
        names.append(name)

    def interpret_block(self):
        self.enter()
        block = False
        while True:
            before = self.position
            self.get_token()
            if self.at(b"}"):
                break
            if self.code == RETURN:
                self.return_value = self.eval_expression()
                break
            if self.at(b"{"):
                block = True
            elif block and self.is_stuck(before):
                raise Hang
            else:
                self.statement()
            if self.code == FINISHED or not block:
                break
        self.leave()

    def statement(self):
        if self.kind == IDENTIFIER:
            self.put_back()
            self.eval_expression()
            self.require(b";", 6)
        elif self.code in (CHAR, INT):
            self.put_back()
            self.declare_local()
        elif self.code == IF:
            self.exec_if()
        elif self.code == ELSE:
            self.find_end_of_block()
        elif self.code == FOR:
            self.exec_for()
        elif self.code == DO:
            self.exec_do()
        elif self.code == WHILE:
            self.exec_while()
        elif self.code == END:
            raise ProcessEnd("exit", 0)

    def find_end_of_block(self):
        self.get_token()
        self.skip_to_balance(b"{", b"}")

    def skip_to_balance(self, opening, closing):
        count = 1
        while count:
            self.get_token_of_walk()
            count += self.at(opening) - self.at(closing)

    def exec_if(self):
        if self.eval_expression():
            self.interpret_block()
            return
        self.find_end_of_block()
        self.get_token()
        if self.code == ELSE:
            self.interpret_block()
        else:
            self.put_back()

    def exec_while(self):
        self.put_back()
        start = self.position
        self.get_token()
        if self.eval_expression():
            self.interpret_block()
            self.position = start
        else:
            self.find_end_of_block()

    def exec_do(self):
        self.put_back()
        start = self.position
        self.get_token()
        self.interpret_block()
        self.get_token()
        if self.code != WHILE:
            raise ScriptError(13)
        if self.eval_expression():
            self.position = start

    def exec_for(self):
        self.get_token()
        self.eval_for_part()
        test = self.position
        while self.eval_for_part():
            step = self.position
            self.skip_to_balance(b"(", b")")
            self.interpret_block()
            self.position = step
            self.eval_expression()
            self.position = test
        self.skip_to_balance(b"(", b")")
        self.find_end_of_block()

    def eval_for_part(self):
        """An expression and its ";", which is stepped over as one character, whatever it is."""
        value = self.eval_expression()
        self.require(b";", 6)
        self.step()
        return value

    def declare_local(self):
        self.get_token()
        while True:
            self.get_token()
            name = self.name_token()
            self.push_local(name, 0)
            self.get_token()
            if not self.at(b","):
                break
        self.require(b";", 6)

    # Loading ------

    def prescan(self):
        depth = 0
        while True:
            while depth:
                self.get_token_of_walk()
                depth += self.at(b"{") - self.at(b"}")
            before = self.position
            self.get_token()
            if self.is_stuck(before):
                raise Hang
            if self.code in (CHAR, INT):
                self.record_declaration(before)
            else:
                depth = int(self.at(b"{"))
            if self.code == FINISHED:
                break
        self.position = 0

    def record_declaration(self, before):
        self.get_token()
        if self.kind != IDENTIFIER:
            return
        name = self.name_token()
        self.get_token()
        if self.at(b"("):
            if len(self.functions) == FUNCTIONS:
                raise ScriptError(TOO_MANY_FUNCTIONS)
            self.functions.append((name, self.position))
            self.step_past_parenthesis()
        else:
            self.position = before
            self.declare_global()

    def declare_global(self):
        self.get_token()
        while True:
            if len(self.globals) == GLOBALS:
                raise ScriptError(TOO_MANY_GLOBALS)
            self.get_token()
            self.globals.append([self.name_token(), 0])
            self.get_token()
            if not self.at(b","):
                break
        self.require(b";", 6)

    def run_main(self):
        location = self.find_function(b"main")
        if location is None:
            self.out += b"main() not found!\n"
            raise ProcessEnd("exit", 1)
        self.text = b"main"
        self.position = location - 1
        self.call_function()

    # Error reports ------

    def report(self, error):
        """Appends the report; returns the span of it that is not fixed, or None."""
        self.out += b"\n" + MESSAGES[error.code].encode() + b" in line "
        start = len(self.out)
        position = min(self.position, self.end)
        lines = self.bytes.count(b"\r", 1, position + 1)
        self.out += b"%d\n" % lines + self.context(position)
        loose = error.loose or error.code in NO_FIXED_POSITION or self.position > self.end
        span = (start, len(self.out)) if loose else None
        self.out += b"Error buffer long jump"
        return span

    def context(self, position):
        start = position
        while start > 0 and self.bytes[start] != LF and position - start < 20:
            start -= 1
        return self.bytes[start:position + 1]

    # The whole run ------

    def run(self):
        try:
            return self.load() or self.run_loaded()
        except ProcessEnd as end:
            return self.outcome(end.kind, end.status)
        except OutOfBudget:
            return self.outcome("budget", None)

    def load(self):
        """The outcome of a load that fails or never ends, else None."""
        try:
            self.prescan()
        except ScriptError as error:
            loose = self.report(error)
            self.out += b"\nFailed to load script.txt"
            return self.outcome("load-failed", 0, loose)
        except Hang:
            return self.outcome("load-hang", None)
        return None

    def run_loaded(self):
        try:
            self.run_main()
        except ScriptError as error:
            return self.outcome("error", 0, self.report(error))
        except Hang:
            return self.outcome("hang", None)
        return self.outcome("done", 0)

    def outcome(self, kind, status, loose=None):
        return Outcome(kind, bytes(self.out), status, loose)


def run(script, stdin=b"", budget=100000):
    """What the engine does with a script: see Outcome. Budget counts tokens read."""
    sys.setrecursionlimit(30 * DEEPEST)
    return Machine(script, stdin, budget).run()
