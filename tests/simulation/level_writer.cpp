#include "simulation/level_writer.h"

#include "simulation/level_arguments.h"
#include "simulation/level_statements.h"

// Of the level that is being written.
static int32_t gFunction = 0;       // the function being written; it calls later ones only
static bool gCallsWritten = false;  // it calls one already

static constexpr size_t kFullSize = 8600;  // after it no further statements are written

// Statements -------------------------------------------------------------------------------------

static void writeStatements(int32_t count, int32_t depth);

static void writeBlock(const std::string& head, int32_t depth) {
    addLine(head + " {");
    writeStatements(randomBetween(gLevelDice, 1, 3), depth + 1);
    addLine("}");
}

static void writeCall() {
    if (gCallsWritten || gFunction + 1 >= kLevelFunctions) return addLine("check();");
    gCallsWritten = true;
    addLine("f" + std::to_string(randomBetween(gLevelDice, gFunction + 1, kLevelFunctions - 1)) +
            "();");
}

static void writeControl(int32_t depth) {
    if (depth >= 2) return writeConsoleStatement();
    switch (randomBelow(gLevelDice, 5)) {
        case 0:
            return writeBlock("if (" + writeValue(gLevelDice) + ")", depth);
        case 1:
            writeBlock("if (c < " + std::to_string(randomBelow(gLevelDice, 60)) + ")", depth);
            return writeBlock("else", depth);
        case 2:
            return writeBlock("for (i = 0; i < 3; i = i + 1)", 2);
        case 3:
            addLine("k = 2;");
            return addLine("while (k > 0) { k = k - 1; moveunit(k, k * 9, c); }");
        default:
            return chance(500) ? writeCall() : addLine("return c;");
    }
}

static void writeStatement(int32_t depth) {
    if (chance(200)) return writeControl(depth);
    writeCallStatement();
}

static void writeStatements(int32_t count, int32_t depth) {
    for (int32_t i = 0; i < count && gLevelScript.size() < kFullSize; i++)
        writeStatement(depth);
}

// Functions --------------------------------------------------------------------------------------

// What every level has. `check` says so when a call has disturbed its caller.
static void writeHelpers() {
    addLine("int c, x, y, t, made, texts, units, pics, keys, wild, age, lo, quick;");
    addLine("int rec(int n) { if (n > 0) { return rec(n - 1) + 1; } return 0; }");
    addLine("int deep(int n) { int a, b; a = n; deep(n + 1); }");
    const std::string open(45, '('), close(45, ')');
    addLine("int nest(int n) { return " + open + "nest(n + 1)" + close + "; }");
    addLine("int sum(int a, int b, int d) { int s; s = a; s = s + b + d; return s; }");
    addLine("int check() { int a, b; a = 40; b = rec(30); if (a != 40) { puts(\"WRONG local\"); }");
    addLine("if (b != 30) { puts(\"WRONG recursion\"); } b = 0;");
    addLine("for (a = 0; a < 5; a = a + 1) { b = sum(b, a, 1); }");
    addLine("if (b != 15) { puts(\"WRONG loop\"); } }");
    addLine(
        "int sweep() { int e; e = getlasttimer(); while (lo <= e) { deletetimer(lo); lo = lo + 1; "
        "}");
    addLine("lo = getlasttimer() + 1; made = 0; }");
}

// The ways in which some levels end: by themselves, or the engine at least.
static void writeEnding() {
    static const char* const kEndings[] = {"end;",
                                           "x = 7 % 0;",
                                           "createtimer(1, 10, \"Nobody\");",
                                           "pausetimer(77, 0);",
                                           "addexectfunckey(0, 4, \"nobody\");",
                                           "changefunckey(4, \"f1\", \"F1\");"};
    const std::string moment = std::to_string(randomBetween(gLevelDice, 1, 300));
    if (chance(80)) addLine("if (age > " + moment + ") { exitgame(); }");
    if (chance(70))
        addLine("if (age == " + moment + ") { " + pickFrom(gLevelDice, kEndings) + " }");
}

static void writeFunction() {
    gCallsWritten = false;
    addLine("int f" + std::to_string(gFunction) + "() {");
    addLine("int i, k;");
    addLine("c = c + 1; if (c > 60) { c = 0; }");
    if (gFunction == 0) {
        addLine("age = age + 1; check();");
        writeEnding();
        addLine("if (c == 50) { sweep(); }");
    }
    writeStatements(randomBetween(gLevelDice, 1, 9), 0);
    addLine("}");
}

static void writeMain() {
    addLine("int main() {");
    addLine("int i, k; lo = " + std::to_string(kLastingTimers) + "; t = lo;");
    for (int32_t i = 0; i < kLastingTimers; i++) {
        const std::string function = i == 0 ? "\"f0\"" : writeFunctionName(gLevelDice);
        addLine("createtimer(0, " + std::to_string(randomBetween(gLevelDice, 20, 4000)) + ", " +
                function + ");");
    }
    for (int32_t i = randomBelow(gLevelDice, 6); i > 0; i--)
        addLine("addexectfunckey(0, " + writeKeyCode(gLevelDice) + ", " + boundName() + ");");
    for (int32_t i = randomBelow(gLevelDice, 5); i > 0; i--)
        addLine("createunit(0, " + anyPlace() + ");");
    writeStatements(randomBetween(gLevelDice, 2, 20), 0);
    addLine("}");
}

std::string writeLevel(uint64_t seed) {
    gLevelDice = Random{seed};
    gLevelScript.clear();
    writeHelpers();
    for (gFunction = 0; gFunction < kLevelFunctions; gFunction++)
        writeFunction();
    writeMain();
    if (chance(10)) addLine("int last = 1;");  // such a level is not loaded
    return gLevelScript;
}
