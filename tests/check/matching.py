"""Which findings explain which answers of the engine.

A warning matches an answer if it is about what the engine then stumbled over: of the same kind, or
a trap that puts the engine out of step.
"""

# After these the engine reads the text out of step: anything may follow.
TRAPS = {
    "unbraced-body", "else-if", "lone-else", "no-body", "gap-before-brace", "gap-before-else",
    "bare-block", "comment-under-comment", "comment-in-expression", "empty-line-in-expression",
    "for-empty-part", "glued-character", "no-effect", "return-in-loop", "extra-brace", "line-end",
    "bad-name", "ignored-text", "no-such-operator", "bad-character",
}

EXPRESSION = {"syntax", "empty-expression", "parentheses", "builtin-arguments", "missing-semicolon",
              "chained-comparison", "output-in-expression", "character-literal", "parameter-list",
              "unknown-function", "unknown-variable", "duplicate-name"}

MATCHING = {
    "Syntax error": EXPRESSION,
    "выражение отсутствует": EXPRESSION,
    "None variable": {"unknown-variable", "unknown-function"},
    "Cant find ';'": EXPRESSION | {"initialiser"},
    "ожидается спецификатор типа": {"parameter-list", "main-parameters", "callback-parameters"},
    "Too many exuct function in argument": {"too-many-calls"},
    "Waiting '()'": EXPRESSION | {"hidden-name"},
    "Waiting while": {"do-without-while"},
    "Waiting closing '\"'": {"character-literal", "builtin-arguments"},
    "Too many local variables": {"too-many-locals", "declaration-in-loop"},
    "X/0 Delenie na NULL": {"division-by-zero"},
    "fault": {"division-by-zero"},
    "abort": {"name-too-long"},
    "status 1": {"callback-unknown", "callback-case", "no-main"},
    "hang": {"endless-loop", "open-brace"},
    "hang at load": set(),
    "Nested too deeply": {"nested-too-deeply"},
    "Too many arguments": {"too-many-arguments"},
}


# The engine cuts a fraction off and goes on. No script means that, so the checker refuses it.
REFUSED_ON_PURPOSE = {"odd-number"}


def is_explained(answer, findings):
    """True if the checker reports an error, or a warning that matches the engine's answer."""
    if any(found["severity"] == "error" for found in findings):
        return True
    matching = MATCHING.get(answer, set()) | TRAPS
    return any(found["id"] in matching for found in findings)


class Tally:
    """Counts scripts, and keeps those that the checker judges wrongly."""

    def __init__(self):
        self.clean = self.refused = self.errors = 0
        self.accused = []  # the engine runs through, the checker reports an error
        self.missed = []  # the engine refuses, the checker says nothing about it

    def take(self, name, answer, findings):
        errors = {found["id"] for found in findings if found["severity"] == "error"}
        has_error = bool(errors)
        if not answer:
            self.clean += 1
            if errors - REFUSED_ON_PURPOSE:
                self.accused.append((name, findings))
            return
        self.refused += 1
        self.errors += has_error
        if not is_explained(answer, findings):
            self.missed.append((name, answer))

    def report(self, least_clean, least_refused, share=0.95):
        """Prints the tables; returns the exit status."""
        explained = self.refused - len(self.missed)
        print(f"{self.clean} scripts run through: {len(self.accused)} with an error reported")
        print(f"{self.refused} scripts are refused: {self.errors} with an error reported, "
              f"{explained - self.errors} with a matching warning, {len(self.missed)} missed")
        for name, findings in self.accused:
            print(f"  accused: {name}: {[f for f in findings if f['severity'] == 'error']}")
        for name, answer in self.missed:
            print(f"  missed:  {name}: {answer}")
        good = (not self.accused and self.clean >= least_clean and self.refused >= least_refused
                and explained >= share * self.refused)
        return 0 if good else 1
