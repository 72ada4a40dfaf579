#include "simulation/level_writer.h"

#include "simulation/level_arguments.h"
#include "simulation/random.h"

// Of the level that is being written.
static Random gDice;
static std::string gScript;
static int32_t gFunction = 0;       // the function being written; it calls later ones only
static bool gCallsWritten = false;  // it calls one already

static constexpr size_t kFullSize = 8600;  // behind it no further statements are written

static bool chance(int32_t ofThousand) {
    return randomChance(gDice, ofThousand);
}

static void line(const std::string& text) {
    gScript += text + "\r\n";
}

// What would grow without end counts in a global of the level, up to a limit.
static void counted(const char* counter, int32_t limit, const std::string& statement) {
    const std::string name = counter;
    line("if (" + name + " < " + std::to_string(limit) + ") { " + name + " = " + name + " + 1; " +
         statement + " }");
}

static std::string place() {
    return writePlace(gDice) + ", " + writePlace(gDice);
}

static std::string value() {
    return writeValue(gDice);
}

// An id that creates few records, or one that may create some at every call.
static void withId(const std::string& before, const std::string& behind) {
    if (chance(750)) {
        line(before + writeId(gDice) + behind);
    } else {
        counted("wild", 60, before + writeLastId(gDice) + behind);
    }
}

// Statements by subsystem
// --------------------------------------------------------------------------

static void writeImageStatement() {
    switch (randomBelow(gDice, 6)) {
        case 0:
            counted("pics", 14, "x = loadimage(" + writePicture(gDice) + ");");
            break;
        case 1:
            line("showimage(" + writeId(gDice) + ", " + value() + ");");
            break;
        case 2:
            line("moveimage(" + value() + ", " + place() + ");");
            break;
        case 3:
            line("changesizeimage(" + writeId(gDice) + ", " + place() + ");");
            break;
        case 4:
            line("x = getimagex(" + value() + ");");
            break;
        default:
            line("y = getimagey(" + writeId(gDice) + ") + 1;");
            break;
    }
}

// One that fires at every tick could make others without end in the very same tick.
static void writeQuickTimer() {
    counted("quick", 3, "createtimer(c < 30, c / 6, " + writeFunctionName(gDice) + ");");
}

static std::string newTimer() {
    return "createtimer(" + std::string(chance(500) ? "0" : value()) + ", " + writeInterval(gDice) +
           ", " + writeFunctionName(gDice) + ");";
}

static void writeTimerStatement() {
    const std::string lasting = std::to_string(randomBelow(gDice, kLastingTimers));
    if (chance(30)) return writeQuickTimer();
    switch (randomBelow(gDice, 7)) {
        case 0:
        case 1:
            counted("made", 25, newTimer() + " t = getlasttimer();");
            break;
        case 2:
            line("pausetimer(" + lasting + ", c < " + std::to_string(randomBelow(gDice, 40)) +
                 ");");
            break;
        case 3:
            withId("pausetimer(", ", 1);");
            break;
        case 4:
            line("deletetimer(" + writeDeletedTimer(gDice) + ");");
            break;
        case 5:
            line("sweep();");
            break;
        default:
            line("if (getcurrenttimer() >= " + std::to_string(kLastingTimers) +
                 ") { deletetimer(getcurrenttimer()); }");
            break;
    }
}

static void writeTextStatement() {
    switch (randomBelow(gDice, 8)) {
        case 0:
        case 1:
            counted("texts", 70,
                    "x = createtext(" + writeText(gDice) + ", " + place() + ", " + place() + ");");
            break;
        case 2:
            withId("deletetext(", ");");
            break;
        case 3:
            withId("hidetext(", ", " + value() + ");");
            break;
        case 4:
            withId("movegametext(", ", " + place() + ");");
            break;
        case 5:
            withId("setgametextwh(", ", " + place() + ");");
            break;
        case 6:
            withId(chance(500) ? "x = getgametextx(" : "y = getgametexty(", ");");
            break;
        default:
            line("x = getlastgametext();");
            break;
    }
}

static void writeUnitStatement() {
    switch (randomBelow(gDice, 5)) {
        case 0:
            counted("units", 16, "x = createunit(" + writeId(gDice) + ", " + place() + ");");
            break;
        case 1:
        case 2:
            withId("moveunit(", ", " + place() + ");");
            break;
        case 3:
            withId(chance(500) ? "x = getunitx(" : "y = getunity(", ");");
            break;
        default:
            line("moveunit(getlastcreatedunit(), " + place() + ");");
            break;
    }
}

// Few names on few keys: one that is bound twice, with another in between, is what shows which of
// the two a removal takes.
static std::string boundName() {
    return chance(250) ? writeFunctionName(gDice) : chance(600) ? "\"f5\"" : "\"f6\"";
}

static void writeKeyStatement() {
    const std::string key = writeKeyCode(gDice);
    const std::string name = boundName();
    switch (randomBelow(gDice, 4)) {
        case 0:
            counted("keys", 80, "addexectfunckey(" + value() + ", " + key + ", " + name + ");");
            break;
        case 1:
            line("changefunckey(" + key + ", " + name + ", " + boundName() + ");");
            break;
        case 2:
            line("deletefunckey(" + key + ", " + name + ");");
            break;
        default:
            line("deletefunckey(getcurrentkey(), " + name + ");");
            break;
    }
}

static void writeWindowStatement() {
    static const char* const kModes[] = {"0", "1", "4097", "c", "0 - 1"};
    static const char* const kSizes[] = {"12", "30", "1", "0", "0 - 5", "90"};
    switch (randomBelow(gDice, 5)) {
        case 0:
            line("changewindowname(" + writeText(gDice) + ");");
            break;
        case 1:
            line("if (c == 5) { fullscreen(" + std::string(pickFrom(gDice, kModes)) + "); }");
            break;
        case 2:
            line("if (c == 9) { changeallfont(" +
                 std::string(chance(700) ? "\"arial.ttf\", " : "\"img/none.ttf\", ") +
                 pickFrom(gDice, kSizes) + "); }");
            break;
        case 3:
            line("changeallcolorfont(" + place() + ", " + value() + ");");
            break;
        default:
            line("x = getmousex() + getmousey();");
            break;
    }
}

static void writeConsoleStatement() {
    static const char* const kStatements[] = {"print(c);",         "print(\"tick\");",
                                              "puts(\"line\");",   "putch(x);",
                                              "x = getche();",     "y = getnum(anything at all);",
                                              "print(x = y + 1);", "PUTCH(7 % 4);"};
    line(pickFrom(gDice, kStatements));
}

// Errors happen seldom, or the functions would never come to their ends.
static void writeErrorStatement() {
    static const char* const kErrors[] = {"x = nobody;",
                                          "x = 5 / 0;",
                                          "x = ;",
                                          "puts(5);",
                                          "print(3;",
                                          "moveimage 3;",
                                          "moveimage(1, 2, 3;",
                                          "createtimer(0, 900, \"f1\";",
                                          "createunit(0, 4, 5;",
                                          "hidetext(0, 1;",
                                          "deletetext(1;",
                                          "rec(200);",
                                          "deep(0);",
                                          "nest(0);",
                                          "x = rec(nobody);",
                                          "do { x = 1; } x = 2;",
                                          "int y = 3;",
                                          "x = sum(1, 2, moveimage(1, nobody, 3));",
                                          "createtext(\"a\", 1, 2, 3, 4;",
                                          "deletetimer(nobody);",
                                          "x = (3 + 4;",
                                          "none(3);",
                                          "addexectfunckey(0, 4, \"f2\";",
                                          "x = createtext(\"b\", 1, rec(150), 3, 4);"};
    if (!chance(250)) return writeConsoleStatement();
    line("if (c == " + std::to_string(randomBelow(gDice, 60)) + ") { " + pickFrom(gDice, kErrors) +
         " }");
}

// Statements
// ---------------------------------------------------------------------------------------

static void writeStatements(int32_t count, int32_t depth);

static void writeBlock(const std::string& head, int32_t depth) {
    line(head + " {");
    writeStatements(randomBetween(gDice, 1, 3), depth + 1);
    line("}");
}

static void writeCall() {
    if (gCallsWritten || gFunction + 1 >= kLevelFunctions) return line("check();");
    gCallsWritten = true;
    line("f" + std::to_string(randomBetween(gDice, gFunction + 1, kLevelFunctions - 1)) + "();");
}

static void writeControl(int32_t depth) {
    if (depth >= 2) return writeConsoleStatement();
    switch (randomBelow(gDice, 5)) {
        case 0:
            return writeBlock("if (" + value() + ")", depth);
        case 1:
            writeBlock("if (c < " + std::to_string(randomBelow(gDice, 60)) + ")", depth);
            return writeBlock("else", depth);
        case 2:
            return writeBlock("for (i = 0; i < 3; i = i + 1)", 2);
        case 3:
            line("k = 2;");
            return line("while (k > 0) { k = k - 1; moveunit(k, k * 9, c); }");
        default:
            return chance(500) ? writeCall() : line("return c;");
    }
}

static void writeStatement(int32_t depth) {
    static void (*const kWriters[])() = {
        writeImageStatement, writeTimerStatement,  writeTimerStatement,
        writeTextStatement,  writeTextStatement,   writeUnitStatement,
        writeKeyStatement,   writeWindowStatement, writeErrorStatement};
    if (chance(200)) return writeControl(depth);
    pickFrom(gDice, kWriters)();
}

static void writeStatements(int32_t count, int32_t depth) {
    for (int32_t i = 0; i < count && gScript.size() < kFullSize; i++)
        writeStatement(depth);
}

// Functions
// ----------------------------------------------------------------------------------------

// What every level has. `check` says so when a call has disturbed its caller.
static void writeHelpers() {
    line("int c, x, y, t, made, texts, units, pics, keys, wild, age, lo, quick;");
    line("int rec(int n) { if (n > 0) { return rec(n - 1) + 1; } return 0; }");
    line("int deep(int n) { int a, b; a = n; deep(n + 1); }");
    const std::string open(45, '('), close(45, ')');
    line("int nest(int n) { return " + open + "nest(n + 1)" + close + "; }");
    line("int sum(int a, int b, int d) { int s; s = a; s = s + b + d; return s; }");
    line("int check() { int a, b; a = 40; b = rec(30); if (a != 40) { puts(\"WRONG local\"); }");
    line("if (b != 30) { puts(\"WRONG recursion\"); } b = 0;");
    line("for (a = 0; a < 5; a = a + 1) { b = sum(b, a, 1); }");
    line("if (b != 15) { puts(\"WRONG loop\"); } }");
    line(
        "int sweep() { int e; e = getlasttimer(); while (lo <= e) { deletetimer(lo); lo = lo + 1; "
        "}");
    line("lo = getlasttimer() + 1; made = 0; }");
}

// The ways in which some levels end: by themselves, or the engine at least.
static void writeEnding() {
    static const char* const kEndings[] = {"end;",
                                           "x = 7 % 0;",
                                           "createtimer(1, 10, \"Nobody\");",
                                           "pausetimer(77, 0);",
                                           "addexectfunckey(0, 4, \"nobody\");",
                                           "changefunckey(4, \"f1\", \"F1\");"};
    const std::string moment = std::to_string(randomBetween(gDice, 1, 300));
    if (chance(80)) line("if (age > " + moment + ") { exitgame(); }");
    if (chance(70)) line("if (age == " + moment + ") { " + pickFrom(gDice, kEndings) + " }");
}

static void writeFunction() {
    gCallsWritten = false;
    line("int f" + std::to_string(gFunction) + "() {");
    line("int i, k;");
    line("c = c + 1; if (c > 60) { c = 0; }");
    if (gFunction == 0) {
        line("age = age + 1; check();");
        writeEnding();
        line("if (c == 50) { sweep(); }");
    }
    writeStatements(randomBetween(gDice, 1, 9), 0);
    line("}");
}

static void writeMain() {
    line("int main() {");
    line("int i, k; lo = " + std::to_string(kLastingTimers) + "; t = lo;");
    for (int32_t i = 0; i < kLastingTimers; i++) {
        const std::string function = i == 0 ? "\"f0\"" : writeFunctionName(gDice);
        line("createtimer(0, " + std::to_string(randomBetween(gDice, 20, 4000)) + ", " + function +
             ");");
    }
    for (int32_t i = randomBelow(gDice, 6); i > 0; i--)
        line("addexectfunckey(0, " + writeKeyCode(gDice) + ", " + boundName() + ");");
    for (int32_t i = randomBelow(gDice, 5); i > 0; i--)
        line("createunit(0, " + place() + ");");
    writeStatements(randomBetween(gDice, 2, 20), 0);
    line("}");
}

std::string writeLevel(uint64_t seed) {
    gDice = Random{seed};
    gScript.clear();
    writeHelpers();
    for (gFunction = 0; gFunction < kLevelFunctions; gFunction++)
        writeFunction();
    writeMain();
    if (chance(10)) line("int last = 1;");  // such a level is not loaded
    return gScript;
}
