"""Random scripts for the differential tests, the same ones for the same seed.

program(seed) gives one script and its standard input. Five families:
  valid     well-formed programs that come to an end
  sloppy    valid ones with blank lines and comments also where the language minds them
  mutated   valid ones with some tokens deleted, doubled, swapped or replaced by nasty ones
  soup      keywords and odd bytes thrown together
  limits    programs at and one beyond each capacity of the language
"""

import random
import re

WORDS = ["alpha", "b", "count", "d4", "e_e", "Value", "ifx", "x", "y", "zeta"]
COMMENTS = ["/**/", "/* c */", "/*{;\"*/", "// note\r\n", "//}\r\n"]
SLOPPY = ["/* c */ ", "/**/\r\n", "\r\n\r\n", " \r\n  \r\n ", "// c\r\n  ", "// c\r\n//d\r\n",
          "/**//", "/**//**/", "/* /* */", "/*/ */", "+", "-", "()", " 1 "]
LETTERS = "AZaz09 +-;,<(="

# What a token is replaced by, or what is put between two.
NASTY = [
    '"', '""', '"text"', '"{"', '"}"', '";"', '")"', '"+"', '"a b', "!", "&", "$", "_", ".",
    "\r\n\r\n", "\r\n \t\r\n", "\r", "\n", "/* c */ ", "/* c */\r\n", "// c\r\n", "// c\r\n  ",
    "/* open", "// end", "{", "}", "(", ")", ";", ";;", ",", "=", "==", "<", ">=", "!=", "<>",
    "+", "-", "*", "/", "%", "^", "return", "return;", "return 3;", "return )", "end", "end;",
    "if", "else", "else if", "while", "do", "for", "for(;;)", "for( ; ;)", "int", "char",
    "int q;", "int q = 1;", "INT", "12ab", "5{", "007", "99999999999999999999", "2147483648",
    "'A'", "'", "'AB'", "' '", "''", "'{'", "'\"'", "'\r\n'", "\x1a", "\0", "\xd0\xb6", "\xff",
    "main", "main()", "print", "puts", "putch", "getche", "getnum", "getche()", "putch(1)",
    "print(1);", "puts(\"s\");", "1", "0", "-", "x", "q", "a" * 31, "1" * 80, '"%s"' % ("s" * 80),
]

TOKEN = re.compile(
    rb'/\*.*?\*/|//[^\n]*\n|"[^"\r\n]*"|\'[^\r\n]\'|[A-Za-z][A-Za-z0-9_]*|[0-9]+|\r\n|'
    rb"[<>=!]=|[ \t]+|.", re.DOTALL)


class Writer:
    """Writes one valid program. Lists of token texts are laid out by layout()."""

    def __init__(self, rng):
        self.rng = rng
        self.functions = []  # (name, parameters)
        self.names = []  # variables that may be read, innermost last
        self.fixed = set()  # loop counters: only their loop may assign them
        self.counter = 0
        self.loops = 0

    def pick(self, *choices):
        return self.rng.choice(choices)

    def chance(self, percent):
        return self.rng.random() * 100 < percent

    def fresh(self, prefix):
        self.counter += 1
        return prefix + str(self.counter)

    # Expressions ------

    def assignable(self):
        return [name for name in self.names if name not in self.fixed]

    def expression(self, depth=3):
        names = self.assignable()
        if names and self.chance(8):
            return [self.rng.choice(names), "="] + self.expression(depth - 1)
        left = self.add_sub(depth)
        if self.chance(20):
            operator = self.pick("<", "<=", ">", ">=", "==", "!=")
            return left + [operator] + self.add_sub(depth - 1)
        return left

    def add_sub(self, depth):
        tokens = self.mul_div(depth)
        while self.chance(25):
            tokens = tokens + [self.pick("+", "-")] + self.mul_div(depth - 1)
        return tokens

    def mul_div(self, depth):
        tokens = self.unary(depth)
        while self.chance(18):
            operator = self.pick("*", "*", "/", "%")
            tokens = tokens + [operator] + self.factor(operator, depth - 1)
        return tokens

    def factor(self, operator, depth):
        """A right operand: mostly one that cannot be zero, for a division."""
        if operator == "*" or self.chance(4):
            return self.unary(depth)
        return [self.pick("", "", "-", "+"), str(self.rng.randint(1, 40))]

    def unary(self, depth):
        return [self.pick("-", "+")] * self.chance(12) + self.operand(depth)

    def operand(self, depth):
        if depth <= 0 or self.chance(55):
            return [self.leaf()]
        if self.chance(55):
            return ["("] + self.expression(depth - 1) + [")"]
        return self.call(depth)

    def leaf(self):
        if self.names and self.chance(60):
            return self.rng.choice(self.names)
        if self.chance(10):
            return "'%s'" % self.rng.choice(LETTERS)
        if self.chance(8):
            return str(self.rng.choice([2147483647, 2147483648, 4294967295, 10 ** 19]))
        return str(self.rng.randint(0, 12))

    def call(self, depth):
        if not self.functions or self.chance(15):
            return self.pick(["getche", "(", ")"], ["getnum", "(", ")"],
                             ["(", "putch", "("] + self.expression(depth - 1) + [")", ")"])
        name, count = self.rng.choice(self.functions)
        if self.chance(6):
            count = max(0, count + self.pick(-1, 1))
        return [name, "("] + self.arguments(count, depth) + [")"]

    def arguments(self, count, depth):
        tokens = []
        for index in range(count):
            tokens += [","] * (index > 0) + self.expression(depth - 1)
        return tokens

    # Statements ------

    def block(self, depth, in_loop=False):
        kept = len(self.names)
        tokens = ["{"]
        for _ in range(self.rng.randint(0, 4)):
            tokens += self.statement(depth) + [" "]
        if self.chance(6) and not in_loop:
            tokens += ["return"] + self.pick([], self.expression(2)) + [";"]
        del self.names[kept:]
        return tokens + ["}"]

    def statement(self, depth):
        simple = [self.assignment, self.assignment, self.output, self.output, self.declaration,
                  self.call_statement, self.oddity]
        nested = [self.if_statement, self.if_statement, self.while_loop, self.do_loop,
                  self.for_loop]
        if depth > 0 and self.chance(45):
            return self.rng.choice(nested)(depth - 1)
        return self.rng.choice(simple)()

    def assignment(self):
        names = self.assignable()
        if not names:
            return self.declaration()
        return [self.rng.choice(names), "="] + self.expression() + [";"]

    def output(self):
        return self.pick(["print", "("] + self.expression() + [")", ";"],
                         ["putch", "("] + self.expression() + [")", ";"],
                         ["puts", "(", '"s%d"' % self.rng.randint(0, 9), ")", ";"],
                         ["print", "(", '""', ")", ";"],
                         ["print", "(", '"p {;} "', ")", ";"])

    def declaration(self):
        tokens = [self.pick("int", "int", "char")]
        for index in range(self.rng.randint(1, 3)):
            name = self.fresh(self.rng.choice(WORDS))
            self.names.append(name)
            tokens += [","] * (index > 0) + [name]
        return tokens + [";"]

    def call_statement(self):
        tokens = self.call(2)
        if tokens[0] == "(":  # a statement cannot begin with a parenthesis
            tokens = tokens[1:-1]
        return tokens + [";"]

    def oddity(self):
        if self.chance(2):
            return ["end", ";"]
        return self.pick([";"], ["12", ";"], ["\r\n\r\n"], ['"text"', ";"], [";", ";"])

    def if_statement(self, depth):
        tokens = ["if", "("] + self.expression() + [")"] + self.block(depth)
        if self.chance(40):
            tokens += ["else", " "] + self.block(depth)
        return tokens

    def loop_body(self, counter, depth):
        """A block that counts first, so that a return inside cannot make the loop endless."""
        block = self.block(depth if self.loops < 2 else 0, in_loop=self.chance(70))
        return ["{", counter, "=", counter, "+", "1", ";"] + block[1:]

    def counted(self, depth, make):
        counter = self.fresh("i")
        self.names.append(counter)
        self.fixed.add(counter)
        self.loops += 1
        tokens = make(counter, str(self.rng.randint(0, 3)), depth)
        self.loops -= 1
        return ["int", counter, ";"] + tokens

    def while_loop(self, depth):
        return self.counted(depth, lambda counter, limit, inner: [
            "while", "(", counter, "<", limit, ")"] + self.loop_body(counter, inner))

    def do_loop(self, depth):
        return self.counted(depth, lambda counter, limit, inner: [
            "do", " "] + self.loop_body(counter, inner) + ["while", "(", counter, "<", limit,
                                                           ")", ";"])

    def for_loop(self, depth):
        return self.counted(depth, lambda counter, limit, inner: [
            "for", "("] + self.pick([counter, "=", "0", ";"], [";", " "])
            + [counter, "<", limit, ";", counter, "=", counter, "+", "1", ")"]
            + self.block(inner, in_loop=self.chance(70)))

    # Functions ------

    def function(self, name, count):
        self.names = list(self.global_names)
        tokens = [self.pick("int", "char"), name, "("]
        parameters = [self.fresh("p") for _ in range(count)]
        for index, parameter in enumerate(parameters):
            tokens += [","] * (index > 0) + [self.pick("int", "char"), parameter]
        self.names += parameters
        body = self.block(2)
        if parameters and self.chance(30):
            body = ["{"] + self.recursion(name, parameters) + body[1:]
        if self.chance(70):
            body = body[:-1] + ["return", " "] + self.tail_value(parameters) + [";", "}"]
        self.functions.append((name, count))
        return tokens + [")"] + body

    def tail_value(self, parameters):
        self.names = self.global_names + parameters
        return self.expression(2)

    def recursion(self, name, parameters):
        """Recursion on the first parameter; a wild argument is bounded before."""
        first = parameters[0]
        rest = [token for _ in parameters[1:] for token in (",", "1")]
        call = [name, "(", first, "-", "1"] + rest + [")", ";"]
        return (["if", "(", first, ">", "4", ")", "{", first, "=", "4", ";", "}"]
                + ["if", "(", first, ">", "0", ")", "{"] + call + ["}"])

    def function_name(self):
        """A new name, or now and then one that a built-in or a variable has already."""
        if self.chance(8):
            return self.pick("getnum", "getche", "putch", *self.global_names)
        return self.fresh("f")

    def program(self):
        self.global_names = [self.fresh(self.rng.choice(WORDS)) for _ in range(3)]
        declarations = ["int", self.global_names[0], ",", self.global_names[1], ";",
                        "char", self.global_names[2], ";"]
        parts = []
        for _ in range(self.rng.randint(0, 4)):
            parts.append(self.function(self.function_name(), self.rng.randint(0, 3)))
        self.names = list(self.global_names)
        body = self.block(3)[:-1] + self.output() + self.block(3)[1:]
        parts.append([self.pick("int", "char"), "main", "(", ")"] + body)
        self.rng.shuffle(parts)
        return declarations + [token for part in parts for token in part + ["\r\n"]]


def is_word(text):
    return bool(text) and (text[-1].isalnum() or text[-1] == "_")


def layout(tokens, rng, sloppy=0.0):
    """Joins tokens with blanks, line ends and comments, only where the language allows them.

    Sloppy is the share of tokens with something before them that it minds.
    """
    text = ""
    for token in tokens:
        if not token:
            continue
        text += rng.choice(SLOPPY) if rng.random() < sloppy else gap(text, token, rng)
        text += "".join(rng.choice((c.lower(), c.upper())) for c in token) \
            if rng.random() < 0.05 and token[0].isalpha() else token
    return text


def gap(text, token, rng):
    """What comes before a token: nothing, if the two cannot be misread as one."""
    if token.isspace() or text.endswith((" ", "\n", "\t")):
        return ""
    blank = rng.choice(["", "", "", " ", " ", "  ", "\t", "\r\n", "\r\n  "])
    if rng.random() < 0.03 and token[0] not in "{} \r/":
        return blank + ("" if text.endswith("/") and not blank else rng.choice(COMMENTS))
    needs_end = is_word(text) and (is_word(token[0]) or token[0] in "{}\"\r")
    return blank or (" " if needs_end else "")


# Mutations ------

def split(script):
    return TOKEN.findall(script)


def mutate(script, rng):
    tokens = split(script)
    for _ in range(rng.choice([1, 1, 1, 2, 3, 5])):
        if tokens:
            mutate_once(tokens, rng)
    return b"".join(tokens)


def mutate_once(tokens, rng):
    index, other = rng.randrange(len(tokens)), rng.randrange(len(tokens))
    action = rng.choice(["delete", "double", "swap", "insert", "insert", "replace", "byte", "cut"])
    if action == "delete":
        del tokens[index]
    elif action == "double":
        tokens.insert(index, tokens[index])
    elif action == "swap":
        tokens[index], tokens[other] = tokens[other], tokens[index]
    elif action == "insert":
        tokens.insert(index, nasty(rng))
    elif action == "replace":
        tokens[index] = rng.choice([nasty(rng), tokens[other]])
    elif action == "byte":
        tokens[index] = mutate_byte(tokens[index], rng)
    elif rng.random() < 0.1:
        del tokens[index:]
    else:
        del tokens[index:index + rng.randint(1, 6)]


def nasty(rng):
    return rng.choice(NASTY).encode("latin-1")


def mutate_byte(token, rng):
    index = rng.randrange(len(token))
    byte = rng.choice([rng.randrange(256), rng.randrange(32, 127)])
    return token[:index] + bytes([byte]) + token[index + 1:]


# Pieces that nearly always keep a script from being loaded: soup takes few of them.
LOAD_BREAKERS = {"!", "&", "$", "_", ".", "\n", "\r\n\r\n", '"', '"a b', "/* open", "{", "}",
                 "'{'", "'\"'", "\0", "\xd0\xb6", "\xff", "\x1a", "1" * 80, '"%s"' % ("s" * 80)}
SOUP = [piece for piece in NASTY if piece not in LOAD_BREAKERS] + [
    "if (x) {", "}", "{ }", "else { }", "while (x < 2) { x = x + 1;", "}", "x = ", "q = x", "(x)",
    "f(", "f()", "f(1, 2)", "int f(int a) {", "}", "do {", "} while (0);", "for (x=0;x<2;x=x+1) {"]


def soup(rng):
    pieces = []
    for _ in range(rng.randint(1, 25)):
        piece = nasty(rng) if rng.random() < 0.03 else rng.choice(SOUP).encode("latin-1")
        pieces.append(piece + rng.choice([b"", b" ", b" ", b"\r\n"]))
    body = b"".join(pieces)
    body += b" }" * (body.count(b"{") - body.count(b"}"))
    wrapped = b"int main() { int x, q; " + body + b" }"
    return rng.choice([body, wrapped, wrapped, b"int x;\r\n" + wrapped + b"\r\nint f() { }"])


# Limits ------

def limits(rng):
    kind = rng.choice(LIMITS)
    return kind(rng)


def at_limit(rng, limit):
    return limit + rng.choice([-1, 0, 0, 1, 1, 2])


def many_functions(rng):
    count = at_limit(rng, 100) - 1
    text = "".join("int f%d() { return %d; }\r\n" % (i, i) for i in range(count))
    return text + "int main() { print(f%d()); }" % (count - 1)


def many_globals(rng):
    count = at_limit(rng, 100)
    names = ["v%d" % i for i in range(count)]
    return "int " + ", ".join(names) + ";\r\nint main() { %s = 3; print(%s); }" % (
        names[-1], names[-1])


def many_locals(rng):
    count = at_limit(rng, 201) - 1  # main() itself takes one slot
    names = ["v%d" % i for i in range(count)]
    declared = "".join("int %s;\r\n" % name for name in names)
    return "int main() {\r\n%sprint(1); %s = 3; print(%s); }" % (declared, names[-1], names[-1])


def many_calls(rng):
    count = at_limit(rng, 101) - 2
    body = rng.choice(["f(n - 1);", "print(n); f(n - 1);", "return f(n-1) + 1;"])
    return ("int f(int n) { if (n) { %s } return 5; }\r\n"
            "int main() { print(f(%d)); }" % (body, count))


def many_frames(rng):
    extra = rng.randint(1, 4)
    names = ", ".join("l%d" % i for i in range(extra))
    return ("int f(int n) { int %s; l0 = n; if (n) { f(n - 1); } print(l0); }\r\n"
            "int main() { f(%d); }" % (names, 200 // (extra + 1) + rng.randint(-3, 3)))


def many_arguments(rng):
    count = at_limit(rng, 32)
    named = rng.choice([1, count, max(1, count - 2), count + 2])
    parameters = ", ".join("int a%d" % i for i in range(named))
    arguments = ", ".join(str(i) for i in range(count))
    return "int f(%s) { return a0 + a%d; }\r\nint main() { print(f(%s)); }" % (
        parameters, named - 1, arguments)


def long_names(rng):
    name = "n" * at_limit(rng, 30)
    where = rng.choice(["int %s;\r\nint main() { %s = 4; print(%s); }",
                        "int main() { int %s; %s = 4; print(%s); }",
                        "int f(int %s) { %s = %s + 1; } int main() { print(1); f(3); }",
                        "int %s() { return 6; } int main() { print(%s()); print(%s()); }"])
    return where % (name, name, name)


def long_tokens(rng):
    length = at_limit(rng, 79)
    token = rng.choice(['"%s"' % ("s" * length), "1" * length, "x" * length])
    where = rng.choice(["int main() { print(%s); }", "int main() { print(1);\r\n %s; print(2); }",
                        "%s\r\nint main() { print(1); }"])
    return where % token


def deep_parentheses(rng):
    depth = rng.choice([10, 500, 1500, 2300])
    return "int main() { print(%s7%s); }" % ("(" * depth, ")" * depth)


def deep_statements(rng):
    depth = rng.choice([10, 200, 700])
    opening, closing = rng.choice([("if(1){", "}"), ("if(0){}else{", "}"), ("i=i+1;if(i){", "}")])
    return "int i;int main() { %s print(7); %s }" % (opening * depth, closing * depth)


def full_buffer(rng):
    size = 10000 + rng.choice([-2, -1, 0, 1, 2])
    ending = rng.choice(["", "\x1a", "}", ";\x1a}", "\x1a\x1a", "\r", "// end", "/*e*/"])
    start = "int main() { print(1); }"
    return start + " " * (size - len(start) - len(ending)) + ending


def endings(rng):
    tail = rng.choice(["//", "// c\r\n", "/**/", "/*", "\r", "\r\n", "'", '"', '"abc', "\x1a",
                       "\x1a\x1a", "int", "int q", "int q/**/", "int q(", "int q,", "int q;"])
    body = rng.choice(["int main() { print(1); }", "int main() { print(q(1)); }"])
    return rng.choice([body + tail, body + "\r\n" + tail, "int main() print(4);" + tail])


def top_level(rng):
    odd = ["int {", "char }", "int if", "int int z;", "int 5 { }", "char \"s\"", "int z(", "int z;",
           "}", "{ }", "12 ;", "int z, if, 5, \"y\";", "int z(int", "char z, , ;", "int z(()", "x"]
    lines = [rng.choice(odd) for _ in range(rng.randint(1, 4))] + ["int main() { print(1); }"]
    rng.shuffle(lines)
    return "\r\n".join(lines)


LIMITS = [many_functions, many_globals, many_locals, many_calls, many_frames, many_arguments,
          long_names, long_tokens, deep_parentheses, deep_statements, full_buffer, endings,
          endings, top_level, top_level]


def valid(rng, sloppy=0.0):
    while True:
        script = layout(Writer(rng).program(), rng, sloppy).encode("latin-1")
        if len(script) < 9000:
            return script


# The families and their shares, percent.
FAMILIES = {"valid": 25, "sloppy": 15, "mutated": 40, "soup": 14, "limits": 6}


def program(seed):
    """(family, script, stdin) of one seed."""
    rng = random.Random(seed)
    family = rng.choices(list(FAMILIES), FAMILIES.values())[0]
    if family == "valid":
        script = valid(rng)
    elif family == "sloppy":
        script = valid(rng, rng.choice([0.002, 0.005, 0.02]))
    elif family == "mutated":
        base = valid(rng) if rng.random() < 0.9 else limits(rng).encode("latin-1")
        script = mutate(base, rng)
    elif family == "soup":
        script = soup(rng)
    else:
        script = limits(rng).encode("latin-1")
    stdin = bytes(rng.randrange(256) for _ in range(rng.randint(0, 6)))
    return family, script, stdin
