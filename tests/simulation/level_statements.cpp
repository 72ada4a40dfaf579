#include "simulation/level_statements.h"

#include "simulation/level_arguments.h"

Random gLevelDice;
std::string gLevelScript;

bool chance(int32_t ofThousand) {
    return randomChance(gLevelDice, ofThousand);
}

void addLine(const std::string& text) {
    gLevelScript += text + "\r\n";
}

// What would grow without end counts in a global of the level, up to a limit.
static void counted(const char* counter, int32_t limit, const std::string& statement) {
    const std::string name = counter;
    addLine("if (" + name + " < " + std::to_string(limit) + ") { " + name + " = " + name +
            " + 1; " + statement + " }");
}

std::string anyPlace() {
    return writePlace(gLevelDice) + ", " + writePlace(gLevelDice);
}

static std::string value() {
    return writeValue(gLevelDice);
}

// An id that creates few records, or one that may create some at every call.
static void withId(const std::string& before, const std::string& after) {
    if (chance(750)) {
        addLine(before + writeId(gLevelDice) + after);
    } else {
        counted("wild", 60, before + writeLastId(gLevelDice) + after);
    }
}

// Statements by subsystem ------------------------------------------------------------------------

static void writeImageStatement() {
    switch (randomBelow(gLevelDice, 6)) {
        case 0:
            counted("pics", 14, "x = loadimage(" + writePicture(gLevelDice) + ");");
            break;
        case 1:
            addLine("showimage(" + writeId(gLevelDice) + ", " + value() + ");");
            break;
        case 2:
            addLine("moveimage(" + value() + ", " + anyPlace() + ");");
            break;
        case 3:
            addLine("changesizeimage(" + writeId(gLevelDice) + ", " + anyPlace() + ");");
            break;
        case 4:
            addLine("x = getimagex(" + value() + ");");
            break;
        default:
            addLine("y = getimagey(" + writeId(gLevelDice) + ") + 1;");
            break;
    }
}

// One that fires at every tick could make others without end in the very same tick.
static void writeQuickTimer() {
    counted("quick", 3, "createtimer(c < 30, c / 6, " + writeFunctionName(gLevelDice) + ");");
}

static std::string newTimer() {
    return "createtimer(" + std::string(chance(500) ? "0" : value()) + ", " +
           writeInterval(gLevelDice) + ", " + writeFunctionName(gLevelDice) + ");";
}

static void writeTimerStatement() {
    const std::string lasting = std::to_string(randomBelow(gLevelDice, kLastingTimers));
    if (chance(30)) return writeQuickTimer();
    switch (randomBelow(gLevelDice, 7)) {
        case 0:
        case 1:
            counted("made", 25, newTimer() + " t = getlasttimer();");
            break;
        case 2:
            addLine("pausetimer(" + lasting + ", c < " +
                    std::to_string(randomBelow(gLevelDice, 40)) + ");");
            break;
        case 3:
            withId("pausetimer(", ", 1);");
            break;
        case 4:
            addLine("deletetimer(" + writeDeletedTimer(gLevelDice) + ");");
            break;
        case 5:
            addLine("sweep();");
            break;
        default:
            addLine("if (getcurrenttimer() >= " + std::to_string(kLastingTimers) +
                    ") { deletetimer(getcurrenttimer()); }");
            break;
    }
}

static void writeTextStatement() {
    switch (randomBelow(gLevelDice, 8)) {
        case 0:
        case 1:
            counted("texts", 70,
                    "x = createtext(" + writeText(gLevelDice) + ", " + anyPlace() + ", " +
                        anyPlace() + ");");
            break;
        case 2:
            withId("deletetext(", ");");
            break;
        case 3:
            withId("hidetext(", ", " + value() + ");");
            break;
        case 4:
            withId("movegametext(", ", " + anyPlace() + ");");
            break;
        case 5:
            withId("setgametextwh(", ", " + anyPlace() + ");");
            break;
        case 6:
            withId(chance(500) ? "x = getgametextx(" : "y = getgametexty(", ");");
            break;
        default:
            addLine("x = getlastgametext();");
            break;
    }
}

static void writeUnitStatement() {
    switch (randomBelow(gLevelDice, 5)) {
        case 0:
            counted("units", 16,
                    "x = createunit(" + writeId(gLevelDice) + ", " + anyPlace() + ");");
            break;
        case 1:
        case 2:
            withId("moveunit(", ", " + anyPlace() + ");");
            break;
        case 3:
            withId(chance(500) ? "x = getunitx(" : "y = getunity(", ");");
            break;
        default:
            addLine("moveunit(getlastcreatedunit(), " + anyPlace() + ");");
            break;
    }
}

// Few names on few keys: one that is bound twice, with another in between, is what shows which of
// the two a removal takes.
std::string boundName() {
    return chance(250) ? writeFunctionName(gLevelDice) : chance(600) ? "\"f5\"" : "\"f6\"";
}

static void writeKeyStatement() {
    const std::string key = writeKeyCode(gLevelDice);
    const std::string name = boundName();
    switch (randomBelow(gLevelDice, 4)) {
        case 0:
            counted("keys", 80, "addexectfunckey(" + value() + ", " + key + ", " + name + ");");
            break;
        case 1:
            addLine("changefunckey(" + key + ", " + name + ", " + boundName() + ");");
            break;
        case 2:
            addLine("deletefunckey(" + key + ", " + name + ");");
            break;
        default:
            addLine("deletefunckey(getcurrentkey(), " + name + ");");
            break;
    }
}

static void writeWindowStatement() {
    static const char* const kModes[] = {"0", "1", "4097", "c", "0 - 1"};
    static const char* const kSizes[] = {"12", "30", "1", "0", "0 - 5", "90"};
    switch (randomBelow(gLevelDice, 5)) {
        case 0:
            addLine("changewindowname(" + writeText(gLevelDice) + ");");
            break;
        case 1:
            addLine("if (c == 5) { fullscreen(" + std::string(pickFrom(gLevelDice, kModes)) +
                    "); }");
            break;
        case 2:
            addLine("if (c == 9) { changeallfont(" +
                    std::string(chance(700) ? "\"arial.ttf\", " : "\"img/none.ttf\", ") +
                    pickFrom(gLevelDice, kSizes) + "); }");
            break;
        case 3:
            addLine("changeallcolorfont(" + anyPlace() + ", " + value() + ");");
            break;
        default:
            addLine("x = getmousex() + getmousey();");
            break;
    }
}

void writeConsoleStatement() {
    static const char* const kStatements[] = {"print(c);",         "print(\"tick\");",
                                              "puts(\"line\");",   "putch(x);",
                                              "x = getche();",     "y = getnum(anything at all);",
                                              "print(x = y + 1);", "PUTCH(7 % 4);"};
    addLine(pickFrom(gLevelDice, kStatements));
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
                                          "createtimer 0, 900, \"f1\");",
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
    addLine("if (c == " + std::to_string(randomBelow(gLevelDice, 60)) + ") { " +
            pickFrom(gLevelDice, kErrors) + " }");
}

void writeCallStatement() {
    static void (*const kWriters[])() = {
        writeImageStatement, writeTimerStatement,  writeTimerStatement,
        writeTextStatement,  writeTextStatement,   writeUnitStatement,
        writeKeyStatement,   writeWindowStatement, writeErrorStatement};
    pickFrom(gLevelDice, kWriters)();
}
