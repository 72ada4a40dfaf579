#include "simulation/level_arguments.h"

const int32_t kUsualKeys[10] = {4, 5, 0, 43, 44, 225, 256, 260, 261, 299};

static const int32_t kOddNumbers[] = {0,     -1,  2147483647, -2147483647, 2147483600, -1000000,
                                      65536, 255, 256,        1000000000,  16777216,   -32768};

static std::string text(int32_t number) {
    return std::to_string(number);
}

static std::string between(Random& random, int32_t from, int32_t to) {
    return text(randomBetween(random, from, to));
}

std::string writeNumber(Random& random) {
    if (randomChance(random, 150)) return text(pickFrom(random, kOddNumbers));
    return between(random, -20, 640);
}

static std::string writeOperand(Random& random) {
    static const char* const kOperands[] = {"c",
                                            "x",
                                            "y",
                                            "age",
                                            "getmousex()",
                                            "getmousey()",
                                            "getcurrentkey()",
                                            "getcurrenttimer()",
                                            "getlasttimer()",
                                            "getlastgametext()",
                                            "getlastcreatedunit()",
                                            "getimagex(0)",
                                            "getimagey(1)",
                                            "getnum(1, 2)",
                                            "(c < 7)",
                                            "rec(3)",
                                            "sum(1, x, 2)",
                                            "(x = y)"};
    return randomChance(random, 500) ? writeNumber(random) : pickFrom(random, kOperands);
}

std::string writeValue(Random& random) {
    static const char* const kOperators[] = {" + ", " - ", " * ", " < ", " >= ", " == ", " != "};
    std::string value = writeOperand(random);
    while (randomChance(random, 300))
        value += pickFrom(random, kOperators) + writeOperand(random);
    return value;
}

std::string writePlace(Random& random) {
    if (randomChance(random, 80)) return writeValue(random);
    return between(random, 0, 480);
}

std::string writeId(Random& random) {
    if (randomChance(random, 60)) return text(pickFrom(random, kOddNumbers));
    return between(random, -2, 12);
}

std::string writeLastId(Random& random) {
    static const char* const kIds[] = {"getlasttimer()",           "getlastgametext()",
                                       "getcurrenttimer()",        "getlastcreatedunit()",
                                       "getlasttimer() + 1",       "getlastgametext() + 1",
                                       "getlastcreatedunit() + 1", "x"};
    return pickFrom(random, kIds);
}

std::string writeDeletedTimer(Random& random) {
    if (randomChance(random, 300)) return "t";
    if (randomChance(random, 60)) return "-" + between(random, 1, 9);
    return between(random, kLastingTimers, kLastingTimers + 40);
}

std::string writeInterval(Random& random) {
    if (randomChance(random, 30)) return between(random, -20, -1);
    if (randomChance(random, 50)) return "x * x + 400";
    return between(random, 400, 30000);
}

std::string writeKeyCode(Random& random) {
    if (randomChance(random, 100)) return writeNumber(random);
    return text(randomChance(random, 400) ? kUsualKeys[0] : pickFrom(random, kUsualKeys));
}

std::string writeText(Random& random) {
    static const char* const kTexts[] = {
        "\"Score\"",
        "\"\"",
        "word",
        "\"100 %d %s %n\"",
        "\"\xD0\x9F\xD1\x80\"",
        "\"\xFF\xC3\"",
        "\"a text of exactly seventy-nine characters, which is as long as one may ever be!\"",
        "12",
        "\"(\"",
        "\"{;\""};
    return pickFrom(random, kTexts);
}

std::string writePicture(Random& random) {
    static const char* const kPictures[] = {
        "\"img/peon.bmp\"", "\"red.bmp\"",    "\"wide.bmp\"", "\"red.bmp\"",
        "\"missing.bmp\"",  "\"broken.bmp\"", "\"img\"",      "\"\""};
    return pickFrom(random, kPictures);
}

std::string writeFunctionName(Random& random) {
    return "\"f" + text(randomBelow(random, kLevelFunctions)) + "\"";
}
