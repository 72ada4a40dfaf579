// Texts: numbers and keys, and what the calls do to a record.
#include <algorithm>
#include <map>
#include <set>
#include <string>

#include "simulation/builtin_calls.h"
#include "simulation/rules.h"
#include "simulation/wrap.h"
#include "texts/game_texts.h"
#include "timers/timers.h"

WRAP_FUNCTION("_Z20findOrCreateGameTexti", GameText&, FindText, (int32_t));
WRAP_FUNCTION("_Z14createGameTextPKcRK8SDL_Rect", int32_t, CreateText,
              (const char*, const SDL_Rect&));
WRAP_FUNCTION("_Z14removeGameTextR8GameText", void, RemoveText, (GameText&));

// A text as the built-ins have left it.
struct KnownText {
    int32_t number = 0;
    SDL_Rect rect = {0, 0, 0, 0};
    bool hidden = true;
    std::string text;
};
static std::map<int32_t, KnownText> gKnownTexts;  // by key
static int32_t gConstructions = 0;                // each takes a number

static void requireCounters() {
    requireRule(gNextTextNumber == gConstructions, "each construction takes one text number");
    requireRule(gLastTextNumber == std::max(gConstructions - 1, 0),
                "the last number is the latest taken");
}

// A look-up of an unknown key makes a hidden, empty text.
static KnownText& expectLookUp(int32_t key) {
    if (gKnownTexts.count(key) == 0) gKnownTexts[key].number = gConstructions++;
    return gKnownTexts[key];
}

static void requireSame(int32_t key, const GameText& text) {
    const KnownText& known = gKnownTexts.at(key);
    requireRule(text.number == known.number, "a text keeps its number and its key");
    requireRule(text.rect.x == known.rect.x && text.rect.y == known.rect.y,
                "a text is where it was put");
    requireRule(text.rect.w == known.rect.w && text.rect.h == known.rect.h,
                "a text has the size it was given");
    requireRule(text.hidden == known.hidden, "a text is hidden by built-ins only");
    requireRule(text.text == known.text, "a text changes by createtext only");
}

GameText& wrapFindText(int32_t key) {
    expectLookUp(key);
    GameText& text = realFindText(key);
    requireSame(key, text);
    requireCounters();
    return text;
}

// The key is the id that the next timer gets; what is there is rewritten.
int32_t wrapCreateText(const char* text, const SDL_Rect& rect) {
    const int32_t key = gNextTimerId;
    KnownText& known = expectLookUp(key);
    known.text = text;
    known.rect = rect;
    known.hidden = false;
    const int32_t result = realCreateText(text, rect);
    requireCounters();
    requireRule(gNextTimerId == key, "a text takes no timer id");
    requireRule(result == gLastTextNumber, "createtext returns the number of the latest text");
    requireRule(gGameTexts.count(key) == 1, "a text is keyed by the next timer id");
    requireSame(key, gGameTexts.at(key));
    return result;
}

// The record is hidden; what goes is the one under its number.
void wrapRemoveText(GameText& text) {
    const int32_t number = text.number;
    for (auto& [key, known] : gKnownTexts)
        if (known.number == number) known.hidden = true;
    gKnownTexts.erase(number);
    realRemoveText(text);
    requireRule(gGameTexts.count(number) == 0, "no text stays under an erased number");
}

static void afterHideText(const BuiltinCall& call, int32_t) {
    expectLookUp(call.values[0]).hidden = call.values[1] != 0;
}

static void afterMoveText(const BuiltinCall& call, int32_t) {
    KnownText& known = expectLookUp(call.values[0]);
    known.rect.x = call.values[1];
    known.rect.y = call.values[2];
}

static void afterSizeText(const BuiltinCall& call, int32_t) {
    KnownText& known = expectLookUp(call.values[0]);
    known.rect.w = call.values[1];
    known.rect.h = call.values[2];
}

static void afterGetTextX(const BuiltinCall& call, int32_t result) {
    requireRule(result == expectLookUp(call.values[0]).rect.x, "getgametextx tells the left edge");
}

static void afterGetTextY(const BuiltinCall& call, int32_t result) {
    requireRule(result == expectLookUp(call.values[0]).rect.y, "getgametexty tells the top edge");
}

void setTextBuiltinRules() {
    setEarlyBuiltinRule("hidetext", afterHideText);
    setEarlyBuiltinRule("movegametext", afterMoveText);
    setEarlyBuiltinRule("setgametextwh", afterSizeText);
    setBuiltinRule("getgametextx", afterGetTextX);
    setBuiltinRule("getgametexty", afterGetTextY);
}

void checkTextRules() {
    static std::set<int32_t> numbers;
    numbers.clear();
    requireCounters();
    requireRule(gGameTexts.size() == gKnownTexts.size(), "texts come and go by built-ins only");
    for (const auto& [key, text] : gGameTexts) {
        requireRule(gKnownTexts.count(key) == 1, "no text moves to another key");
        requireSame(key, text);
        requireRule(text.number < gNextTextNumber, "every text number has been handed out");
        requireRule(numbers.insert(text.number).second, "no two texts have one number");
    }
}
