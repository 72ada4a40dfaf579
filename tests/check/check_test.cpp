#include "check/check.h"

#include <gtest/gtest.h>

#include <random>

#include "check/builtins.h"
#include "check/line_ends.h"
#include "check/names.h"
#include "check/report.h"
#include "check/scanner.h"
#include "script/host/builtins.h"
#include "script/source/text.h"
#include "support/level.h"

static std::vector<Finding> check(const std::string& script) {
    return checkScript("script.txt", withCrLf(script), false).findings;
}

static bool has(const std::vector<Finding>& findings, CheckId id) {
    for (const Finding& finding : findings) {
        if (finding.id == id) return true;
    }
    return false;
}

static bool hasError(const std::vector<Finding>& findings) {
    for (const Finding& finding : findings) {
        if (finding.severity == Severity::Error) return true;
    }
    return false;
}

static std::string reportsOf(const std::string& bytes, ReportForm form = ReportForm::Plain) {
    const CheckResult result = checkScript("script.txt", bytes, false);
    std::string reports;
    for (const Finding& finding : result.findings)
        reports += reportOf(result.source, finding, form);
    return reports;
}

// The checker's tokens are the engine's ---------------------------------------------------------

// Takes the bytes as the program text, as if they had been read from a file.
static void takeText(std::string& bytes) {
    bytes.resize(std::min(bytes.size(), kProgramCapacity - 1));
    setProgramText(bytes.data(), "script.txt");
    bytes.resize(static_cast<size_t>(gProgramEnd - gProgramBuffer));
}

static void expectSameToken(const Lexeme& ours, const Token& theirs, size_t position) {
    const size_t end = static_cast<size_t>(theirs.end - gProgramBuffer);
    ASSERT_EQ(theirs.fault, ours.fault) << "at " << position;
    if (theirs.fault != TokenFault::None) return;
    TokenText text;
    copyText(theirs, text);
    EXPECT_EQ(std::string(text), std::string(ours.text)) << "at " << position;
    EXPECT_EQ(theirs.kind, ours.kind) << "at " << position;
    EXPECT_EQ(theirs.keyword, ours.keyword) << "at " << position;
    EXPECT_EQ(end, ours.next) << "at " << position;
}

static void expectSameTokens(std::string text) {
    takeText(text);
    const Scanner scanner(text);
    for (size_t position = 0; position <= text.size() + 1; position++) {
        const Token theirs = readToken(gProgramBuffer + position);
        expectSameToken(scanner.read(position), theirs, position);
        if (testing::Test::HasFailure()) FAIL() << "in " << testing::PrintToString(text);
    }
}

TEST(Scanner, ReadsWhatTheLexerReads) {
    static const char* const kPieces[] = {" ",    "\t", "\r\n", "\r",   "\n",    "/*",     "*/",
                                          "//",   "/",  "\"",   "'",    "{",     "}",      "(",
                                          ")",    ";",  ",",    "=",    "==",    "!=",     "!",
                                          "<",    "<=", ">",    ">=",   "+",     "-",      "*",
                                          "%",    "^",  "&",    "_",    ".",     "if",     "Do",
                                          "x",    "Ab", "12",   "9{",   "$",     "return", "\xff",
                                          "\x01", "5}", "else", "int ", "main(", "//\n",   "/**/"};
    std::mt19937 random(1);
    for (int i = 0; i < 3000; i++) {
        std::string text;
        for (size_t n = random() % 40; n > 0; n--)
            text += kPieces[random() % std::size(kPieces)];
        expectSameTokens(text);
        if (HasFatalFailure()) return;
    }
    expectSameTokens(std::string(79, 'a') + " " + std::string(80, 'a') + " " +
                     std::string(80, '1'));
    expectSameTokens("\"" + std::string(79, 'a') + "\" \"" + std::string(80, 'a') + "\"");
}

// The list of built-ins --------------------------------------------------------------------------

TEST(BuiltinList, HasTheEnginesTableInItsOrder) {
    size_t i = 0;
    for (; gBuiltins[i].name[0] != '\0'; i++)
        EXPECT_EQ(gBuiltins[i].name, gBuiltinSignatures[i].name);
    EXPECT_EQ(40U, i);
    EXPECT_TRUE(gBuiltinSignatures[i].name.empty());
}

// A call with that many of the arguments that the list promises, and with numbers after them.
static std::string callWith(const BuiltinSignature& builtin, size_t count) {
    std::string arguments;
    for (size_t i = 0; i < count; i++) {
        const char kind = i < builtin.arguments.size() ? builtin.arguments[i] : 'i';
        const bool number = kind == 'i' || kind == 'k' || kind == 'e' || kind == 'v';
        arguments += std::string(i > 0 ? ", " : "") + (number ? "1" : "\"main\"");
    }
    return "int main() { " + std::string(builtin.name) + "(" + arguments + "); }";
}

static bool engineRefuses(const std::string& script) {
    return runLevel(script).find("Error buffer long jump") != std::string::npos;
}

TEST(BuiltinList, HasTheArgumentsThatTheEngineReads) {
    startEngine();
    for (const BuiltinSignature* row = gBuiltinSignatures; !row->name.empty(); row++) {
        if (row->arguments == "*") continue;
        const size_t right = row->arguments.size();
        for (size_t count = right > 1 ? right - 1 : 0; count <= right + 1; count++) {
            const std::string script = callWith(*row, count);
            EXPECT_EQ(engineRefuses(script), hasError(check(script))) << script;
            EXPECT_TRUE(count != right || !hasError(check(script))) << script;
        }
    }
}

TEST(BuiltinList, SaysWhichCallsMustEndTheirStatement) {
    startEngine();
    for (const BuiltinSignature* row = gBuiltinSignatures; !row->name.empty(); row++) {
        const std::string call = callWith(*row, row->arguments == "*" ? 0 : row->arguments.size());
        std::string script = call;
        script.insert(script.find(");") + 1, " + 1");
        EXPECT_EQ(row->endsStatement, engineRefuses(script)) << script;
        EXPECT_EQ(row->endsStatement, has(check(script), CheckId::OutputInExpression)) << script;
    }
}

// Reports ----------------------------------------------------------------------------------------

TEST(Report, HasTheFormOfTheCompilers) {
    EXPECT_EQ(
        "script.txt:3:3: error: there is no operator +=: write x = x + 1 [no-such-operator]\n"
        "    x += 1;\n"
        "      ^\n",
        reportsOf("int x; int main()\r\n{\r\nx += 1;\r\n}\r\n"));
}

TEST(Report, CountsBytesAndPlacesTheCaretByCharacters) {
    EXPECT_EQ(
        "script.txt:1:29: error: a value expected before \";\" [empty-expression]\n"
        "    int a; int main() { /*é*/a=; }\n"
        "                               ^\n",
        reportsOf("int a; int main() { /*\xC3\xA9*/a=; }"));
}

TEST(Report, EscapesControlCharacters) {
    const std::string report = reportsOf("int main() { puts(\"\x1b[31m\x07\xff\"); x = 1; }");
    EXPECT_NE(std::string::npos, report.find("puts(\"\\x1B[31m\\x07\\xFF\"); x = 1;")) << report;
    for (char c : report)
        EXPECT_TRUE(c == '\n' || (c >= ' ' && c <= '~')) << int{c};
}

TEST(Report, ShowsThePartOfALongLineAroundThePlace) {
    const std::string blanks(2000, ' ');
    const std::string report = reportsOf("int main() {" + blanks + "x = 1;" + blanks + "}");
    EXPECT_LT(report.size(), 400U);
    EXPECT_NE(std::string::npos, report.find("x = 1;"));
}

TEST(Report, HasColoursOnRequestOnly) {
    const std::string script = "int main() { x = 1; }";
    EXPECT_EQ(std::string::npos, reportsOf(script).find('\x1b'));
    const std::string colour = reportsOf(script, ReportForm::Colour);
    EXPECT_NE(std::string::npos, colour.find("\x1b[1;31merror: \x1b[0m")) << colour;
}

TEST(Report, WritesOneJsonObjectALine) {
    EXPECT_EQ(
        "{\"file\": \"script.txt\", \"line\": 1, \"column\": 14, \"severity\": \"error\", "
        "\"id\": \"unknown-variable\", \"text\": \"\\\"x\\\" is not declared here\"}\n",
        reportsOf("int main() { x = 1; }", ReportForm::Json));
}

// Certainty --------------------------------------------------------------------------------------

TEST(Certainty, CallsAnErrorWhatTheEngineReaches) {
    EXPECT_TRUE(hasError(check("int f() { x = 1; }\nint main() { f(); }")));
    EXPECT_TRUE(hasError(check("int main() { int i; i = 3; if (i > 2) { x = 1; } }")));
    EXPECT_TRUE(hasError(check("int t() { x = 1; }\nint main() { createtimer(0, 1, \"t\"); }")));
    EXPECT_TRUE(hasError(check("int main() { int i; i = 5; i = 7 / (i - 5); }")));
}

TEST(Certainty, OnlyWarnsOfWhatItMayNotReach) {
    const char* const scripts[] = {
        "int f() { x = 1; }\nint main() { }",
        "int main() { int i; i = 1; if (i > 2) { x = 1; } }",
        "int main() { if (getche()) { x = 1; } }",
        "int main() { if (getche()) { end; } x = 1; }",
        "int main() { while (getche() < 0) { end; } x = 1; }",
        "int t() { x = 1; }\nint main() { createtimer(0, 1, \"t\"); deletetimer(0); }",
        "int t() { x = 1; }\nint main() { createtimer(0, 1, \"t\"); exitgame(); }",
        "int t() { x = 1; }\nint main() { createtimer(0, 1, \"t\"); if (getche()) { end; } }",
        "int t() { x = 1; }\nint main() { if (getche()) { createtimer(0, 1, \"t\"); } }",
    };
    for (const char* script : scripts) {
        EXPECT_FALSE(hasError(check(script))) << script;
        EXPECT_TRUE(has(check(script), CheckId::UnknownVariable)) << script;
    }
}

TEST(Certainty, GoesOnAfterBranchesThatOnlyChangeVariables) {
    EXPECT_TRUE(
        hasError(check("int main() { int i; if (getche()) { i = 1; } else { i = 2; } x = i; }")));
    EXPECT_FALSE(hasError(check("int main() { int i; if (getche()) { i = 1; } i = 1 / i; }")));
    EXPECT_TRUE(
        hasError(check("int main() { int i; while (getche() > i) { i = i + 1; } x = i; }")));
}

TEST(Certainty, FindsLoopsThatNothingEnds) {
    EXPECT_TRUE(
        has(check("int i; int main() { while (i < 3) { print(i); } }"), CheckId::EndlessLoop));
    EXPECT_FALSE(
        has(check("int i; int main() { while (i < 3) { i = i + 1; } }"), CheckId::EndlessLoop));
    EXPECT_FALSE(has(check("int main() { while (1) { if (getche() < 0) { end; } } }"),
                     CheckId::EndlessLoop));
    EXPECT_FALSE(has(check("int g; int f() { while (g) { g = 0; } }\n"
                           "int main() { f(); f(); g = 1; f(); g = 1; f(); }"),
                     CheckId::EndlessLoop));
}

static bool hasErrorOf(const std::string& script, CheckId id) {
    for (const Finding& finding : check(script)) {
        if (finding.id == id && finding.severity == Severity::Error) return true;
    }
    return false;
}

TEST(Certainty, LoopsWithAConstantTestAreEndlessUnlessTheGameMayEnd) {
    const std::string loop = "int x; int main() { while (1) { x = x + 1; } }";
    EXPECT_TRUE(hasErrorOf(loop, CheckId::EndlessLoop));
    EXPECT_FALSE(hasErrorOf(loop + "int f() { end; }", CheckId::EndlessLoop));
    EXPECT_FALSE(hasErrorOf("int x; int main() { if (getche()) { while (1) { x = x + 1; } } }",
                            CheckId::EndlessLoop));
}

TEST(Certainty, MissingTimerFunctionsEndTheGameUnlessSomethingComesBefore) {
    const std::string script = "int main() { createtimer(1, 9, \"t\"); }";
    EXPECT_TRUE(hasErrorOf(script, CheckId::CallbackUnknown));
    EXPECT_TRUE(
        hasErrorOf("int T() { } int main() { createtimer(0, 9, \"T\"); }", CheckId::CallbackCase));
    for (const char* other : {"int f() { deletetimer(0); }", "int f() { pausetimer(0, 1); }",
                              "int f() { exitgame(); }", "int f() { end; }"}) {
        EXPECT_TRUE(has(check(script + other), CheckId::CallbackUnknown)) << other;
        EXPECT_FALSE(hasErrorOf(script + other, CheckId::CallbackUnknown)) << other;
    }
    EXPECT_FALSE(
        hasErrorOf("int main() { addexectfunckey(0, 4, \"t\"); }", CheckId::CallbackUnknown));
}

// What is not said --------------------------------------------------------------------------------

TEST(Silence, PicturesThatMayBeShownAreNotReported) {
    for (const char* script : {"int a; int main() { a = loadimage(\"a.bmp\"); showimage(a, 1); }",
                               "int a; int show(int i) { showimage(i, 1); } "
                               "int main() { a = loadimage(\"a.bmp\"); show(a); }",
                               "int main() { loadimage(\"a.bmp\"); showimage(0, 1); }"}) {
        EXPECT_FALSE(has(check(script), CheckId::NeverShown)) << script;
    }
    EXPECT_TRUE(has(check("int a, b; int main() { a = loadimage(\"a.bmp\"); "
                          "b = loadimage(\"b.bmp\"); showimage(a, 1); }"),
                    CheckId::NeverShown));
}

TEST(Silence, OnlyTimersThatRepeatNeedAnInterval) {
    EXPECT_FALSE(
        has(check("int t() { } int main() { createtimer(1, 0, \"t\"); }"), CheckId::TimerInterval));
}

TEST(Silence, ComparisonsAreNoAssignments) {
    for (const char* test : {"a == 4", "(a = 4) == 4", "a != 4"}) {
        const std::string script =
            "int a; int main() { if (" + std::string(test) + ") { print(a); } }";
        EXPECT_FALSE(has(check(script), CheckId::AssignedCondition)) << script;
    }
}

TEST(Silence, ABackslashAtTheEndOfATextIsNoEscape) {
    EXPECT_TRUE(check("int main() { puts(\"C:\\\"); createtext(\"\\\", 0, 0, 9, 9); }").empty());
}

// Braces and comments that do not match are shown alone -------------------------------------------

static void expectAlone(const std::string& script, CheckId id, size_t line) {
    const CheckResult result = checkScript("script.txt", withCrLf(script), false);
    ASSERT_EQ(1U, result.findings.size()) << script;
    EXPECT_EQ(id, result.findings[0].id) << script;
    EXPECT_EQ(line, result.source.placeOf(result.findings[0].position).line) << script;
}

TEST(Braces, TheIndentationTellsWhichOneIsMissing) {
    expectAlone(
        "int main()\n{\n    if (1) {\n        if (2) {\n            puts(\"a\");\n    }\n}\n",
        CheckId::OpenBrace, 4);
    expectAlone(
        "int f()\n{\n    if (1)\n    {\n        puts(\"a\");\n}\nint main()\n{\n    f();\n}\n",
        CheckId::OpenBrace, 4);
    expectAlone("int f()\n    puts(\"a\");\n}\nint main()\n{\n    f();\n}\n", CheckId::ExtraBrace,
                2);
    expectAlone("int main()\n{\n    if (1) { puts(\"a\"); } }\n    x = 1;\n}\n",
                CheckId::ExtraBrace, 3);
}

TEST(Braces, WhatSwallowsABraceIsTheCause) {
    expectAlone("int main()\n{\n    /* a\n}\n", CheckId::OpenComment, 3);
    expectAlone("int main()\n{\n    puts(\"a); }\n", CheckId::OpenString, 3);
    expectAlone("int main()\n{\n    if (1) { puts(\"a\"); } else{ puts(\"b\"); }\n}\n",
                CheckId::GluedCharacter, 3);
}

TEST(Certainty, AScriptThatIsCutWarnsIfTheRestLoads) {
    const std::string blanks(10000, ' ');
    EXPECT_FALSE(hasError(check("int main() { }" + blanks)));
    EXPECT_TRUE(has(check("int main() { }" + blanks), CheckId::TooBig));
    EXPECT_TRUE(hasError(check("int main() { " + blanks + "}")));
}

// Suggestions ------------------------------------------------------------------------------------

TEST(Suggestions, FindTheWordThatWasMeant) {
    EXPECT_EQ("score", nearestName("scroe", {"lives", "score"}));
    EXPECT_EQ("", nearestName("alpha", {"lives", "score"}));
    EXPECT_EQ("", nearestName("x", {"i"}));
    EXPECT_EQ("", nearestName("ab", {"a", "abc"}));
    EXPECT_NE(std::string::npos,
              reportsOf("int main() { movimage(0, 1, 2); }").find("did you mean \"moveimage\"?"));
}

// Line ends --------------------------------------------------------------------------------------

TEST(LineEnds, BareLineFeedsAreMendedAndNothingElse) {
    EXPECT_EQ("a\r\nb\r\n\r\nc\rd\xff", withCrLf("a\nb\r\n\nc\rd\xff"));
    EXPECT_EQ(std::string("\0\r\n\0", 4), withCrLf(std::string("\0\n\0", 3)));
    EXPECT_EQ("a\r\nb\r\n", withCrLf("a\rb\r"));
    EXPECT_EQ(2U, countBadLineEnds("a\nb\r\n\nc"));
}

TEST(LineEnds, TheRestIsCheckedAsIfTheyWereMended) {
    const auto findings = checkScript("s", "int main()\n{\n    x = 1;\n}\n", false).findings;
    EXPECT_TRUE(has(findings, CheckId::LineEnd));
    EXPECT_TRUE(has(findings, CheckId::UnknownVariable));
}

// Hostile texts ----------------------------------------------------------------------------------

// Whatever the text is: the findings lie inside it, in its order, with words in them.
static void checkHostile(const std::string& bytes) {
    const CheckResult result = checkScript("script.txt", bytes, false);
    const Source& source = result.source;
    size_t before = 0;
    for (const Finding& finding : result.findings) {
        const TextPlace place = source.placeOf(finding.position);
        ASSERT_LE(finding.position, source.text.size()) << bytes;
        ASSERT_LE(before, finding.position) << bytes;
        ASSERT_LE(place.line, source.placeOf(source.text.size()).line) << bytes;
        ASSERT_LE(place.column, source.lineAt(finding.position).size() + 2) << bytes;
        ASSERT_FALSE(finding.text.empty()) << bytes;
        before = finding.position;
    }
}

TEST(Hostile, RandomBytesAreChecked) {
    std::mt19937 random(2);
    for (int i = 0; i < 2000; i++) {
        std::string bytes(random() % 300, '\0');
        for (char& c : bytes)
            c = static_cast<char>(i % 2 == 0 ? random()
                                             : " (){};,=+-*/%'\"<>!\r\nabif01"[random() % 27]);
        checkHostile(bytes);
        checkHostile("int main() {" + bytes + "}");
    }
}

// Every beginning and every end of a script that has something of everything.
TEST(Hostile, CutScriptsAreChecked) {
    const std::string script =
        "/* c */ int g, h; // d\r\nchar f(int a, char b) { return a % b - 'x'; }\r\n"
        "int t() { g = g + 1; if (g == 3) { end; } else { puts(\"t\"); } }\r\n"
        "int main() { int i; for (i = 0; i < 9; i = i + 1) { h = f(i, 2) * (h + 1); }\r\n"
        "do { i = i - 1; } while (i > 0); while (i != 4) { i = i + 1; print(i); }\r\n"
        "createtimer(0, 10, \"t\"); createtext(\"a\", 1, 2, 3, 4); putch(getche()); }\r\n";
    EXPECT_FALSE(hasError(checkScript("script.txt", script, false).findings));
    for (size_t cut = 0; cut < script.size(); cut++) {
        checkHostile(script.substr(0, cut));
        checkHostile(script.substr(cut));
        checkHostile(script.substr(0, cut) + script.substr(cut + 1));
    }
}

static std::string repeated(const std::string& text, int count) {
    std::string result;
    while (count-- > 0)
        result += text;
    return result;
}

// As deep as 9999 bytes can be, in every way that the language nests.
TEST(Hostile, DeepTextsAreChecked) {
    for (const char* piece :
         {"(", "{", "a=", "if(1){", "else ", "do ", "do{", "while(1)", "for(;;", "print(", "putch(",
          "main(", "moveimage(1,", "-(", "if(getche()){", "return ", "int ", "//\r\n", "/**/"}) {
        const int count = 9900 / static_cast<int>(std::string(piece).size());
        checkHostile("int a; int main() { " + repeated(piece, count));
        checkHostile("int a; int main() { " + repeated(piece, count / 2) + " }");
        checkHostile(repeated(piece, count));
    }
    const std::string deep = repeated("(", 4900) + "1" + repeated(")", 4900);
    EXPECT_TRUE(has(check("int main() { print(" + deep + "); }"), CheckId::NestedTooDeeply));
}
