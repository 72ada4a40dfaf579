#include "play/commands.h"

#include <algorithm>

#include "play/hands.h"
#include "play/level.h"
#include "play/looks.h"
#include "play/output.h"
#include "play/pace.h"

static bool gEndSeen = false;  // the play knows that the level has ended

bool isEndUnexpected() {
    return gLevelEnd != LevelEnd::None && !gEndSeen;
}

static constexpr int64_t kMostMs = 1000LL * 3600 * 24 * 365;

// Time ------------------------------------------------------------------------------------------

// run MS
static Answer doRun(Words& words) {
    const int64_t ms = readNumber(words, "milliseconds", 0, kMostMs);
    if (!isComplete(words)) return faultOf(words);
    runLevel(static_cast<uint64_t>(ms));
    return ok();
}

// close
static Answer doClose(Words& words) {
    if (!isComplete(words)) return faultOf(words);
    pressClose();
    runLevel(gPassMs);
    gEndSeen = gLevelEnd == LevelEnd::Closed;
    return ok();
}

// ended HOW
static Answer doEnded(Words& words) {
    const Word how = atEnd(words) ? Word() : words.words[words.next];
    LevelEnd end = LevelEnd::Count;
    for (int i = 1; i < static_cast<int>(LevelEnd::Count); i++) {
        if (takeWord(words, endWord(static_cast<LevelEnd>(i)))) end = static_cast<LevelEnd>(i);
    }
    if (end == LevelEnd::Count) {
        expected(words, "closed, exitgame, 0, 1, abort, division or stuck");
    }
    if (!isComplete(words)) return faultOf(words);
    if (gLevelEnd == LevelEnd::None) return failed("the level has not ended");
    gEndSeen = true;
    if (gLevelEnd == end) return ok();
    return failed("expected the end " + how.text + ", but the level has ended: " + endSentence());
}

// Hands -----------------------------------------------------------------------------------------

// key down|up|tap KEY
static Answer doKey(Words& words) {
    const bool tap = takeWord(words, "tap");
    const bool down = !tap && takeWord(words, "down");
    if (!tap && !down && !takeWord(words, "up")) expected(words, "down, up or tap");
    const SDL_Scancode key = words.fault.empty() ? readKey(words) : SDL_SCANCODE_UNKNOWN;
    if (!isComplete(words)) return faultOf(words);
    if (tap || down) pressKey(key);
    if (down || releaseKey(key)) return ok();
    return failed(std::string("the key ") + SDL_GetScancodeName(key) + " is not down");
}

struct Point {
    int x;
    int y;
};

static Point readPoint(Words& words) {
    constexpr int kFar = 32767;
    const int x = static_cast<int>(readNumber(words, "x", -kFar, kFar));
    const int y = static_cast<int>(readNumber(words, "y", -kFar, kFar));
    return {x, y};
}

static Answer moveMouse(Words& words) {
    const Point to = readPoint(words);
    if (!isComplete(words)) return faultOf(words);
    movePointer(to.x, to.y);
    return ok();
}

static Answer pressMouse(Words& words) {
    const Uint8 button = readButton(words);
    if (!isComplete(words)) return faultOf(words);
    pressButton(button);
    return ok();
}

static Answer releaseMouse(Words& words) {
    const Uint8 button = readButton(words);
    if (!isComplete(words)) return faultOf(words);
    return releaseButton(button) ? ok() : failed("the button is not down");
}

static Answer clickMouse(Words& words) {
    const Uint8 button = readButton(words);
    const Point at = readPoint(words);
    if (!isComplete(words)) return faultOf(words);
    bringPointer(at.x, at.y);
    pressButton(button);
    releaseButton(button);
    return ok();
}

static Answer dragMouse(Words& words) {
    const Uint8 button = readButton(words);
    const Point from = readPoint(words);
    const Point to = readPoint(words);
    if (!isComplete(words)) return faultOf(words);
    bringPointer(from.x, from.y);
    pressButton(button);
    dragPointer(to.x, to.y);
    releaseButton(button);
    return ok();
}

// mouse move X Y | down|up BUTTON | click BUTTON X Y | drag BUTTON X Y TOX TOY
static Answer doMouse(Words& words) {
    if (takeWord(words, "move")) return moveMouse(words);
    if (takeWord(words, "down")) return pressMouse(words);
    if (takeWord(words, "up")) return releaseMouse(words);
    if (takeWord(words, "click")) return clickMouse(words);
    if (takeWord(words, "drag")) return dragMouse(words);
    expected(words, "move, down, up, click or drag");
    return faultOf(words);
}

// Ears ------------------------------------------------------------------------------------------

// expect "TEXT" [within MS]
static Answer doExpect(Words& words) {
    const std::string text = readQuoted(words, "a text in quotes");
    const bool waits = takeWord(words, "within");
    const int64_t ms = waits ? readNumber(words, "milliseconds", 0, kMostMs) : 0;
    if (!isComplete(words)) return faultOf(words);
    const uint64_t endMs = levelTimeMs() + static_cast<uint64_t>(ms);
    while (!matchOutput(text)) {
        if (levelTimeMs() >= endMs || gLevelEnd != LevelEnd::None || gStopped) {
            return failed("expected " + escaped(text) +
                          ", since the last match the level printed " + escaped(unmatchedOutput()));
        }
        runLevel(std::min<uint64_t>(gPassMs, endMs - levelTimeMs()));
    }
    return ok();
}

// reject "TEXT"
static Answer doReject(Words& words) {
    const std::string text = readQuoted(words, "a text in quotes");
    if (!isComplete(words)) return faultOf(words);
    if (gPrinted.find(text) == std::string::npos) return ok();
    return failed("the level has printed " + escaped(text) + ", in all " + escapedEnd(gPrinted));
}

// output
static Answer doOutput(Words& words) {
    if (!isComplete(words)) return faultOf(words);
    return ok(escaped(newOutput()));
}

// All of them -----------------------------------------------------------------------------------

struct Command {
    const char* name;
    bool acts;  // wants a level that goes on
    Answer (*run)(Words& words);
};
static constexpr Command kCommands[] = {
    {"run", true, doRun},        {"key", true, doKey},        {"mouse", true, doMouse},
    {"close", true, doClose},    {"ended", false, doEnded},   {"expect", false, doExpect},
    {"reject", false, doReject}, {"output", false, doOutput}, {"pixel", false, doPixel},
    {"count", false, doCount},   {"title", false, doTitle},   {"picture", false, doPicture},
    {"timers", false, doTimers}, {"images", false, doImages}, {"texts", false, doTexts},
    {"units", false, doUnits},
};

bool isEmptyLine(const std::string& line) {
    const Words words = splitLine(line);
    return words.words.empty() && words.fault.empty();
}

Answer runCommand(const std::string& line) {
    Words words = splitLine(line);
    if (!words.fault.empty()) return faultOf(words);
    for (const Command& command : kCommands) {
        if (!takeWord(words, command.name)) continue;
        if (!command.acts || gLevelEnd == LevelEnd::None) return command.run(words);
        gEndSeen = true;
        return failed("the level has ended: " + endSentence());
    }
    expected(words, "a command");
    return faultOf(words);
}
