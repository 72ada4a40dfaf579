#include "play/commands.h"

#include <cstdio>

#include "app/globals.h"
#include "play/hands.h"
#include "play/level.h"
#include "play/output.h"
#include "play/pace.h"
#include "play/picture.h"
#include "play/records.h"
#include "play/words.h"

std::string gPlayFolder = "./";
std::string gOutputFolder = "./";

static bool gEndSeen = false;  // the play knows that the level has ended

bool isEndUnexpected() {
    return gLevelEnd != LevelEnd::None && !gEndSeen;
}

static constexpr int64_t kMaxMs = 1000LL * 3600 * 24 * 365;

// Answers ---------------------------------------------------------------------------------------

static Answer ok(const std::string& value = "") {
    return {Answer::Kind::Ok, value, {}, 1};
}

static Answer failed(const std::string& reason) {
    return {Answer::Kind::Failed, reason, {}, 1};
}

static Answer faultOf(const Words& words) {
    return {Answer::Kind::Error, words.fault, {}, words.faultColumn};
}

static Answer noFrame() {
    return failed("there is no frame: the engine is shut down");
}

static std::string colourText(Uint32 colour) {
    char text[10];
    std::snprintf(text, sizeof text, "#%06x", static_cast<unsigned>(colour & 0xFFFFFF));
    return text;
}

// Time ------------------------------------------------------------------------------------------

// run MS
static Answer doRun(Words& words) {
    const int64_t ms = readNumber(words, "milliseconds", 0, kMaxMs);
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
    const int64_t ms = waits ? readNumber(words, "milliseconds", 0, kMaxMs) : 0;
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
    return failed("the level has printed " + escaped(text) + ", in all " + escaped(gPrinted));
}

// output
static Answer doOutput(Words& words) {
    if (!isComplete(words)) return faultOf(words);
    return ok(escaped(newOutput()));
}

// Eyes ------------------------------------------------------------------------------------------

// pixel X Y COLOUR
static Answer doPixel(Words& words) {
    const int x = static_cast<int>(readNumber(words, "x", 0, SCREEN_WIDTH - 1));
    const int y = static_cast<int>(readNumber(words, "y", 0, SCREEN_HEIGHT - 1));
    const Uint32 colour = readColour(words);
    if (!isComplete(words)) return faultOf(words);
    Frame frame;
    if (!readFrame(frame)) return noFrame();
    const Uint32 found = pixelAt(frame, x, y);
    if (found == colour) return ok();
    return failed("expected " + colourText(colour) + ", the pixel is " + colourText(found));
}

// A rectangle in the frame.
static SDL_Rect readRect(Words& words) {
    SDL_Rect rect;
    rect.x = static_cast<int>(readNumber(words, "x", 0, SCREEN_WIDTH - 1));
    rect.y = static_cast<int>(readNumber(words, "y", 0, SCREEN_HEIGHT - 1));
    rect.w = static_cast<int>(readNumber(words, "a width", 1, SCREEN_WIDTH - rect.x));
    rect.h = static_cast<int>(readNumber(words, "a height", 1, SCREEN_HEIGHT - rect.y));
    return rect;
}

// What a count must be: is N, over N, under N, or anything.
struct Bounds {
    int64_t low = 0;
    int64_t high = INT32_MAX;
};

static Bounds readBounds(Words& words) {
    Bounds bounds;
    if (takeWord(words, "is")) {
        bounds.low = bounds.high = readNumber(words, "a number", 0, INT32_MAX);
    } else if (takeWord(words, "over")) {
        bounds.low = readNumber(words, "a number", 0, INT32_MAX) + 1;
    } else if (takeWord(words, "under")) {
        bounds.high = readNumber(words, "a number", 0, INT32_MAX) - 1;
    }
    return bounds;
}

// count X Y W H COLOUR [is|over|under N]
static Answer doCount(Words& words) {
    const SDL_Rect rect = readRect(words);
    const Uint32 colour = readColour(words);
    const Bounds bounds = readBounds(words);
    if (!isComplete(words)) return faultOf(words);
    Frame frame;
    if (!readFrame(frame)) return noFrame();
    const int count = countPixels(frame, rect, colour);
    if (count >= bounds.low && count <= bounds.high) return ok(std::to_string(count));
    return failed("there are " + std::to_string(count) + " pixels of " + colourText(colour));
}

// title "TEXT"
static Answer doTitle(Words& words) {
    const std::string text = readQuoted(words, "a title in quotes");
    if (!isComplete(words)) return faultOf(words);
    if (gEngineClosed) return failed("there is no window: the engine is shut down");
    const std::string title = SDL_GetWindowTitle(gWindow);
    if (title == text) return ok();
    return failed("expected " + escaped(text) + ", the title is " + escaped(title));
}

static std::string under(const std::string& folder, const std::string& path) {
    return path.empty() || path[0] == '/' ? path : folder + path;
}

// Compares with the picture of the file; up to `allowed` pixels may differ.
static Answer compare(const Frame& frame, const std::string& path, int64_t allowed) {
    Frame golden;
    if (!loadFrame(path, golden)) return failed(path + " is no picture of 640 by 480 pixels");
    const int differing = differingPixels(frame, golden);
    if (differing <= allowed) return ok(std::to_string(differing));
    return failed(std::to_string(differing) + " pixels differ from " + path);
}

// picture FILE [same as GOLDEN [within N]]
static Answer doPicture(Words& words) {
    const std::string path = under(gOutputFolder, readPath(words));
    const bool compares = takeWord(words, "same");
    if (compares && !takeWord(words, "as")) expected(words, "as");
    const std::string golden = compares ? under(gPlayFolder, readPath(words)) : "";
    const bool tolerates = compares && takeWord(words, "within");
    const int64_t allowed = tolerates ? readNumber(words, "pixels", 0, INT32_MAX) : 0;
    if (!isComplete(words)) return faultOf(words);
    Frame frame;
    if (!readFrame(frame)) return noFrame();
    if (!saveFrame(frame, path)) return failed("cannot write " + path + ": " + SDL_GetError());
    return compares ? compare(frame, golden, allowed) : ok();
}

// A registry's command, followed by nothing or by a text that one record at least must hold.
static Answer answerRecords(Words& words, const std::vector<std::string>& records) {
    const bool asks = !atEnd(words);
    const std::string text = asks ? readQuoted(words, "a text in quotes") : "";
    if (!isComplete(words)) return faultOf(words);
    Answer answer = ok();
    for (const std::string& record : records) {
        if (record.find(text) != std::string::npos) answer.records.push_back(record);
    }
    answer.text = std::to_string(answer.records.size());
    if (!asks || !answer.records.empty()) return answer;
    std::string all;
    for (const std::string& record : records)
        all += "; " + record;
    return failed("no record has " + text + all);
}

static Answer doTimers(Words& words) {
    return answerRecords(words, timerRecords());
}
static Answer doImages(Words& words) {
    return answerRecords(words, imageRecords());
}
static Answer doTexts(Words& words) {
    return answerRecords(words, textRecords());
}
static Answer doUnits(Words& words) {
    return answerRecords(words, unitRecords());
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
