"""Hand-made examples of the language, each with its answer, for the model itself."""

import os
import signal
import sys
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

import lexer  # noqa: E402
from lexer import Lexer  # noqa: E402
from model import quotient, run, wrap  # noqa: E402

JUMP = "Error buffer long jump"
FAILED = "\nFailed to load script.txt"


def tokens(text):
    """All token texts up to the end of the text; at most 20."""
    reader = Lexer(text)
    position, found = 0, []
    while len(found) < 20:
        token = reader.token_at(position)
        if token.code == lexer.FINISHED:
            break
        found.append(token.text)
        position = token.after
    return found


def main_of(body, before=""):
    """A script of CR LF lines with the body in main()."""
    text = before + "int main() { int a, b, c, i; " + body + " }\n"
    return text.replace("\n", "\r\n").encode()


class ModelTest(unittest.TestCase):
    def ends(self, script, kind, stdout, status=0, stdin=b""):
        outcome = run(script, stdin)
        self.assertEqual((outcome.kind, outcome.status), (kind, status), outcome)
        self.assertEqual(outcome.stdout.decode("utf-8", "replace"), stdout)

    def prints(self, body, stdout, before="", stdin=b""):
        self.ends(main_of(body, before), "done", stdout, stdin=stdin)

    def fails(self, body, message, printed="", before=""):
        outcome = run(main_of(body, before))
        self.assertEqual(outcome.kind, "error", outcome)
        text = outcome.stdout.decode("utf-8", "replace")
        self.assertTrue(text.startswith(printed + "\n" + message + " in line "), text)
        self.assertTrue(text.endswith(JUMP), text)


class Loading(ModelTest):
    def test_file_of_10000_bytes_is_cut_to_9999(self):
        script = b"int main() { print(1); }"
        self.ends(script + b" " * (10000 - len(script)), "done", "1")
        self.ends(b" " * (10000 - len(script)) + script, "load-hang", "", None)
        self.ends(b" " * (9999 - len(script)) + script, "done", "1")

    def test_final_ctrl_z_is_removed(self):
        self.ends(b"int main() { print(1); }\x1a", "done", "1")
        self.ends(b"int main() { print(1); }\x1a ", "load-hang", "", None)

    def test_ctrl_z_at_the_cut(self):
        script = b"int main() { print(1); }"
        self.ends(script + b" " * (9998 - len(script)) + b"\x1a" + b"&" * 9, "done", "1")

    def test_empty_file(self):
        self.ends(b"", "exit", "main() not found!\n", 1)

    def test_globals_start_at_zero(self):
        self.prints("x = x + 1; print(x); print(y);", "10", before="int x, y;\n")

    def test_global_with_initialiser(self):
        report = "\nCant find ';' in line 0\nint x = "
        self.ends(b"int x = 1;\r\nint main() { }", "load-failed", report + JUMP + FAILED)

    def test_text_outside_braces_is_ignored(self):
        self.prints("print(1);", "1", before="hello 12 ; \"text\" }\n")

    def test_brace_after_a_type_word_opens_nothing(self):
        self.ends(b"int { int main() { print(1); }", "done", "1")

    def test_bare_line_feed_hangs(self):
        self.ends(b"int x;\nint main() { }\n", "load-hang", "", None)

    def test_missing_brace_hangs(self):
        self.ends(b"int main() { {", "load-hang", "", None)

    def test_stray_character_hangs(self):
        self.ends(b"int main() { } &", "load-hang", "", None)
        self.ends(b"int main() { a = !b; }", "load-hang", "", None)

    def test_name_of_31_characters_is_fatal(self):
        name = "n" * 31
        self.ends(b"int %s;" % name.encode(), "signal",
                  "Name is too long: " + name + "\n", -signal.SIGABRT)
        self.prints("n" * 30 + " = 5; print(" + "n" * 30 + ");", "5",
                    before="int " + "n" * 30 + ";\n")

    def test_capacities(self):
        functions = "".join("int f%d() { }\n" % i for i in range(99))
        self.prints("print(1);", "1", before=functions)
        outcome = run(main_of("", functions + "int g() { }\n"))
        self.assertTrue(outcome.stdout.startswith(b"\nToo many functions in line "))
        names = ",".join("v%d" % i for i in range(100))
        self.prints("v99 = 3; print(v99);", "3", before="int " + names + ";\n")
        outcome = run(main_of("", "int " + names + ",w;\n"))
        self.assertTrue(outcome.stdout.startswith(b"\nToo many global variables in line "))


class Lexing(ModelTest):
    def test_operators(self):
        self.assertEqual(tokens(b"a<=b"), [b"a", b"\2\2", b"b"])
        self.assertEqual(tokens(b"a=b"), [b"a", b"=", b"b"])
        self.assertEqual(tokens(b"a==b"), [b"a", b"\5\5", b"b"])
        self.assertEqual(tokens(b"a<>=!=b"), [b"a", b"\1", b"\4\4", b"\6\6", b"b"])
        self.assertEqual(tokens(b"a=>b"), [b"a", b"=", b"\3", b"b"])

    def test_case(self):
        self.assertEqual(Lexer(b"IF").token_at(0).code, lexer.IF)
        self.assertEqual(tokens(b"Main"), [b"main"])

    def test_strings(self):
        self.assertEqual(tokens(b'"a b"'), [b"a b"])
        self.assertEqual(tokens(b'""x'), [b"", b"x"])
        with self.assertRaises(lexer.LexError) as caught:
            tokens(b'"abc\r\n')
        self.assertEqual(caught.exception.code, 0)

    def test_comments(self):
        self.assertEqual(tokens(b"x /* c */y"), [b"x", b"y"])
        self.assertEqual(tokens(b"x /* c */\r\ny"), [b"x", b"", b"y"])
        self.assertEqual(tokens(b"x /* c */ y"), [b"x", b"", b"y"])
        self.assertEqual(tokens(b"x // c\r\ny"), [b"x", b"y"])
        self.assertEqual(tokens(b"x // c\r\n{"), [b"x", b"", b"{"])
        self.assertEqual(tokens(b"x // c"), [b"x"])
        self.assertEqual(tokens(b"/**//**/"), [b"/", b"*", b"*", b"/"])

    def test_numbers(self):
        self.assertEqual(tokens(b"5;"), [b"5", b";"])
        self.assertEqual(tokens(b"5{"), [b"5{"])
        self.assertEqual(tokens(b"12ab+1"), [b"12ab", b"+", b"1"])

    def test_blank_lines(self):
        self.assertEqual(tokens(b"a\r\nb"), [b"a", b"b"])
        self.assertEqual(tokens(b"a\r\n\r\nb"), [b"a", b"", b"b"])
        self.assertEqual(tokens(b"a\r\n \t \r\nb"), [b"a", b"", b"b"])

    def test_end_of_text(self):
        reader = Lexer(b"a ")
        self.assertEqual(reader.token_at(1).code, lexer.FINISHED)
        self.assertEqual(reader.token_at(1).text, b"")
        self.assertEqual(reader.token_at(2).code, lexer.FINISHED)

    def test_longest_token(self):
        self.assertEqual(tokens(b"a" * 79), [b"a" * 79])
        for text, position in ((b" " + b"a" * 80, 80), (b'"' + b"a" * 80 + b'"', 80)):
            with self.assertRaises(lexer.LexError) as caught:
                tokens(text)
            self.assertEqual(caught.exception.code, lexer.TOKEN_TOO_LONG)
            self.assertEqual(caught.exception.position, position)

    def test_comment_not_closed(self):
        outcome = run(b"int main() { } /* c")
        self.assertEqual(outcome.kind, "load-failed")
        self.assertTrue(outcome.stdout.startswith(b"\nComment is not closed in line "))


class Expressions(ModelTest):
    def value(self, expression, expected):
        self.prints("print(" + expression + ");", str(expected))

    def test_arithmetic(self):
        for expression, expected in (("2+3*4", 14), ("(2+3)*4", 20), ("7/2", 3), ("-7/2", -3),
                                     ("-7%3", -1), ("7%-3", 1), ("2-3-4", -5), ("+5", 5),
                                     ("-(-1)", 1), ("12ab", 12), ("99999999999999999999", -1),
                                     ("2147483647+1", -2147483648)):
            self.value(expression, expected)

    def test_wrapping(self):
        self.assertEqual(wrap(2 ** 31), -2 ** 31)
        self.assertEqual(quotient(-2 ** 31, -1), -2 ** 31)
        self.value("(0-2147483647-1)/-1", -2147483648)
        self.value("(0-2147483647-1)%-1", 0)

    def test_assignment(self):
        self.prints("a = b = 5; print(a); print(b); print(a = 6); print(a);", "5566")

    def test_comparison(self):
        self.prints("a = 5; print(a == 5); print(a == 4);", "10")
        for expression, expected in (("1<2", 1), ("2<=2", 1), ("1>2", 0), ("1>=2", 0),
                                     ("1!=2", 1), ("-1<1", 1), ("1+1==2", 1)):
            self.value(expression, expected)

    def test_no_chain_of_comparisons(self):
        self.fails("a = 1 < 2 < 3;", "Cant find ';'")

    def test_empty_token_takes_one_operand_more(self):
        self.value("5 /**/ 7", 5)
        self.value("(5 /**/ 7)", 5)
        self.prints("a = 5; print(a /**/ );", "5")

    def test_division_by_zero(self):
        self.fails("a = 1; b = a / 0;", "X/0 Delenie na NULL")
        script = main_of("print(3); a = 1 % 0;")
        self.ends(script, "signal", "3", -signal.SIGFPE)

    def test_character_literals(self):
        self.value("'A'", 65)
        self.value("' '", 32)
        self.fails("a = 'AB';", "Waiting closing '\"'")
        self.ends(b"int main() { print('\xe9'); }", "load-hang", "", None)
        self.ends(b"int main() { print('//\xe9'\r\n); }", "error",
                  "\nWaiting closing '\"' in line 0\nint main() { print('/" + JUMP)

    def test_sign(self):
        self.fails("a = - -1;", "Syntax error")

    def test_call_without_return_gives_the_last_return_value(self):
        self.prints("print(g()); print(f());", "77", before="int f() { }\nint g() { return 7; }\n")
        self.prints("print(f());", "0", before="int f() { }\n")

    def test_names_hide_each_other(self):
        self.prints("x = 3; print(x()); print(GetNum());", "90",
                    before="int x;\nint x() { return 9; }\nint getnum() { return 1; }\n")
        self.fails("x = 3; print(x);", "Waiting '()'", before="int x;\nint x() { }\n")

    def test_empty_parentheses(self):
        self.value("()", 0)
        self.value("5+()", 5)

    def test_missing_operands(self):
        self.fails("a = ;", "Syntax error")
        self.fails("if \n\n(a) { }", "выражение отсутствует")
        self.fails("a = \"\";", "Syntax error")
        self.fails("a = (1;", "Waiting '()'")
        self.fails("a = q;", "None variable")


class Statements(ModelTest):
    def test_parameters(self):
        subtract = "int f(int a, int b) { return a - b; }\n"
        self.prints("print(f(5, 2));", "3", before=subtract)
        self.prints("print(f(5));", "5", before=subtract)
        self.prints("print(f());", "0", before=subtract)
        self.prints("print(f(5, 2, 1));", "3", before=subtract)

    def test_return_in_an_if(self):
        function = "int f(int x) { if (x) { return 1; } return 2; }\n"
        self.prints("print(f(1)); print(f(0));", "12", before=function)

    def test_statements_after_return_in_a_nested_block_run(self):
        function = "int f(int x) { if (x) { return 1; print(8); } return 2; }\n"
        self.prints("print(f(1));", "81", before=function)

    def test_return_in_a_while(self):
        function = "int f() { int i; while (i < 3) { i = i + 1; return 7; } print(i); }\n"
        self.prints("print(f());", "37", before=function)

    def test_do(self):
        self.prints("do { i = i + 1; } while (i < 3); print(i);", "3")
        self.fails("do { } x;", "Waiting while")
        self.fails("do { return 1; } while (0);", "Waiting while")

    def test_if_and_else(self):
        self.prints("if (1) { print(1); } else { print(2); }", "1")
        self.prints("if (0) { print(1); } else { print(2); }", "2")
        self.prints("if (0) { print(1); } else if (1) { print(2); } print(3);", "23")
        self.prints("if (0) { print(1); } print(3);", "3")
        self.prints("if (1) print(1); else { print(2); } print(3);", "13")

    def test_else_if_after_a_taken_if_runs_out_of_the_function(self):
        self.prints("if (1) { print(1); } else if (1) { print(2); }", "1")

    def test_for(self):
        self.prints("for (i = 0; i < 3; i = i + 1) { print(i); } print(i);", "0123")
        self.prints("for (i = 0; ; i = i + 1) { print(i); } print(9);", "9")
        self.prints("i = 0; for (; i < 2; i = i + 1) { print(i); }", "01")
        self.fails("for (;;) { }", "Cant find ';'")
        self.prints("for (i = 0; i < 3; i = i + (1)) { return; print(i); } print(i);", "3")

    def test_nested_bare_block_ends_the_outer_one(self):
        self.prints("{ print(1); } print(2);", "1")

    def test_body_after_blank_line_or_comment(self):
        self.ends(b"int main()\r\n{ print(1); }", "done", "1")
        self.ends(b"int main()\r\n\r\n{ print(1); }", "done", "")
        self.ends(b"int main() // c\r\n{ print(1); }", "done", "")

    def test_full_stacks(self):
        names = ",".join("v%d" % i for i in range(196))
        self.prints("int %s; v195 = 2; print(v195);" % names, "2")
        self.fails("int %s, w;" % names, "Too many local variables")
        recursion = "int f(int n) { if (n) { f(n - 1); } }\n"
        self.prints("f(99); print(1);", "1", before=recursion)
        self.fails("f(100);", "Too many exuct function in argument", before=recursion)

    def test_declaration_with_initialiser(self):
        self.fails("int x = 1;", "Cant find ';'")

    def test_end(self):
        self.ends(main_of("print(1); end; print(2);"), "exit", "1")

    def test_arguments(self):
        self.prints("print(f(%s));" % ",".join("1" * 32), "1", before="int f(int a) {return a;}\n")
        self.fails("f(%s);" % ",".join("1" * 33), "Too many arguments", before="int f() { }\n")
        self.fails("f;", "Waiting '()'", before="int f() { }\n")
        self.fails("f(1);", "ожидается спецификатор типа", before="int f(a) { }\n")

    def test_strings_are_never_brackets(self):
        self.prints("\"}\" \"{\" \";\" print(1);", "1")
        self.fails("a = 1 \"+\" 2;", "Cant find ';'")

    def test_deep_nesting(self):
        self.prints("print(%s1%s);" % ("(" * 2000, ")" * 2000), "1")
        self.assertEqual(run(main_of("print(%s1%s);" % ("(" * 2600, ")" * 2600))).kind, "budget")

    def test_endless_loop_is_out_of_budget(self):
        self.assertEqual(run(main_of("while (1) { }")).kind, "budget")

    def test_walk_past_the_end_hangs(self):
        self.ends(b"int main() if (0) print(1);", "hang", "", None)


class Reports(ModelTest):
    def test_first_line_is_line_0(self):
        self.ends(b"int main() { x = 1; }", "error",
                  "\nNone variable in line 0\nint main() { x " + JUMP)

    def test_context_begins_with_the_line_feed(self):
        script = b"int a;\r\nint main()\r\n{\r\na = q;\r\n}\r\n"
        self.ends(script, "error", "\nNone variable in line 3\n\na = q;" + JUMP)

    def test_context_is_at_most_21_bytes(self):
        script = b"int main() { int a; a =      5 / 0; print(a); }"
        self.ends(script, "error", "\nX/0 Delenie na NULL in line 0\nt a; a =      5 / 0; " + JUMP)

    def test_puts_without_a_string(self):
        self.fails("puts(5);", "Waiting closing '\"'")
        self.fails("puts(a);", "Waiting closing '\"'")


class Console(ModelTest):
    def test_output(self):
        self.prints("putch(7*6);", "42")
        self.prints("print(\"Hi\"); print(3); puts(\"Hi\");", "\nHi3Hi\n")
        self.prints("PUTCH(1);", "1")
        self.prints("print(putch(65)+1);", "6666")
        self.fails("putch(1, 2);", "Waiting '()'")

    def test_puts_needs_a_semicolon(self):
        self.fails("a = puts(\"x\") + 1;", "Cant find ';'", printed="x\n")

    def test_input(self):
        body = "c = getche(); print(c); print(getche(ignored, text)); print(getche());"
        self.prints(body, "65-1-1", stdin=b"A\xff")
        self.prints("print(getnum());", "0")


if __name__ == "__main__":
    unittest.main()
