#include "play/commands.h"

#include <algorithm>
#include <cstdio>

#include "app/base/window.h"
#include "play/hands.h"
#include "play/level.h"
#include "play/line.h"
#include "play/looks.h"
#include "play/output.h"

std::string gPlayFolder = "./";
std::string gOutputFolder = "./";

static bool gEndSeen = false;  // the play knows that the level has ended

bool isEndUnexpected() {
    return gLevelEnd != LevelEnd::None && !gEndSeen;
}

static Answer ok(const std::string& value = "") {
    return {Answer::Kind::Ok, value, {}, 1};
}

static Answer failed(const std::string& reason) {
    return {Answer::Kind::Failed, reason, {}, 1};
}

static int numberAt(const Arguments& said, size_t index) {
    return static_cast<int>(said.numbers[index]);
}

// Time --------------------------------------------------------------------------------------------

static Answer doRun(const Arguments& said) {
    runLevel(static_cast<uint64_t>(said.numbers[0]));
    return ok();
}

static Answer doClose(const Arguments&) {
    pressClose();
    runLevel(gPassMs);
    gEndSeen = gLevelEnd == LevelEnd::Closed;
    return ok();
}

static Answer doEnded(const Arguments& said) {
    if (gLevelEnd == LevelEnd::None) return failed("the level has not ended");
    gEndSeen = true;
    const auto end = static_cast<LevelEnd>(said.numbers[0] + 1);
    if (gLevelEnd == end) return ok();
    return failed(std::string("expected the end ") + endWord(end) +
                  ", but the level has ended: " + endSentence());
}

// Hands -------------------------------------------------------------------------------------------

static Answer doKey(const Arguments& said) {
    enum { Down, Up, Tap };
    const auto key = static_cast<SDL_Scancode>(said.numbers[1]);
    if (said.numbers[0] != Up) pressKey(key);
    if (said.numbers[0] == Down || releaseKey(key)) return ok();
    return failed(std::string("the key ") + SDL_GetScancodeName(key) + " is not down");
}

static Answer doMove(const Arguments& said) {
    movePointer(numberAt(said, 0), numberAt(said, 1));
    return ok();
}

static Uint8 buttonAt(const Arguments& said, size_t index) {
    return static_cast<Uint8>(SDL_BUTTON_LEFT + said.numbers[index]);
}

static Answer doButton(const Arguments& said) {
    const bool isDown = said.numbers[0] == 0;
    if (isDown) pressButton(buttonAt(said, 1));
    return isDown || releaseButton(buttonAt(said, 1)) ? ok() : failed("the button is not down");
}

static Answer doClick(const Arguments& said) {
    bringPointer(numberAt(said, 1), numberAt(said, 2));
    pressButton(buttonAt(said, 0));
    releaseButton(buttonAt(said, 0));
    return ok();
}

static Answer doDrag(const Arguments& said) {
    constexpr int kSteps = 4;
    const SDL_Point from = {numberAt(said, 1), numberAt(said, 2)};
    const SDL_Point to = {numberAt(said, 3), numberAt(said, 4)};
    bringPointer(from.x, from.y);
    pressButton(buttonAt(said, 0));
    for (int step = 1; step <= kSteps; step++)
        movePointer(from.x + (to.x - from.x) * step / kSteps,
                    from.y + (to.y - from.y) * step / kSteps);
    releaseButton(buttonAt(said, 0));
    return ok();
}

// Ears --------------------------------------------------------------------------------------------

static Answer doExpect(const Arguments& said) {
    static size_t matched = 0;  // where the last match in gPrinted ends
    const std::string& text = said.texts[0];
    const int64_t ms = said.numbers.empty() ? 0 : said.numbers[0];
    const uint64_t endMs = levelTimeMs() + static_cast<uint64_t>(ms);
    while (gPrinted.find(text, matched) == std::string::npos) {
        if (levelTimeMs() >= endMs || gLevelEnd != LevelEnd::None || gStopped)
            return failed("expected " + escaped(text) +
                          ", since the last match the level printed " +
                          escaped(gPrinted.substr(matched)));
        runLevel(std::min<uint64_t>(gPassMs, endMs - levelTimeMs()));
    }
    matched = gPrinted.find(text, matched) + text.size();
    return ok();
}

static Answer doReject(const Arguments& said) {
    if (gPrinted.find(said.texts[0]) == std::string::npos) return ok();
    return failed("the level has printed " + escaped(said.texts[0]));
}

static Answer doOutput(const Arguments&) {
    static size_t given = 0;
    const size_t start = given;
    given = gPrinted.size();
    return ok(escaped(gPrinted.substr(start)));
}

// Eyes --------------------------------------------------------------------------------------------

static Answer noFrame() {
    return failed("there is no frame: the engine is shut down");
}

static std::string colourText(int64_t colour) {
    char text[10];
    std::snprintf(text, sizeof text, "#%06x", static_cast<unsigned>(colour));
    return text;
}

static Answer doPixel(const Arguments& said) {
    const Picture frame = readFrame();
    if (frame == nullptr) return noFrame();
    const int64_t found = pixelAt(*frame, numberAt(said, 0), numberAt(said, 1));
    if (found == said.numbers[2]) return ok();
    return failed("expected " + colourText(said.numbers[2]) + ", the pixel is " +
                  colourText(found));
}

// The part of a rectangle outside the frame has no pixels.
static int countPixels(const SDL_Surface& frame, const SDL_Rect& rect, int64_t colour) {
    int count = 0;
    for (int y = rect.y; y < std::min(rect.y + rect.h, SCREEN_HEIGHT); y++) {
        for (int x = rect.x; x < std::min(rect.x + rect.w, SCREEN_WIDTH); x++)
            count += pixelAt(frame, x, y) == colour ? 1 : 0;
    }
    return count;
}

static Answer doCount(const Arguments& said) {
    enum { Is, Over, Under };
    const SDL_Rect rect = {numberAt(said, 0), numberAt(said, 1), numberAt(said, 2),
                           numberAt(said, 3)};
    const Picture frame = readFrame();
    if (frame == nullptr) return noFrame();
    const int count = countPixels(*frame, rect, said.numbers[4]);
    if (said.numbers.size() == 5) return ok(std::to_string(count));
    const int64_t how = said.numbers[5];
    const int64_t wanted = said.numbers[6];
    if (how == Is ? count == wanted : how == Over ? count > wanted : count < wanted)
        return ok(std::to_string(count));
    return failed("there are " + std::to_string(count) + " pixels of " +
                  colourText(said.numbers[4]));
}

static Answer doTitle(const Arguments& said) {
    if (gEngineClosed) return failed("there is no window: the engine is shut down");
    const std::string title = SDL_GetWindowTitle(gWindow);
    if (title == said.texts[0]) return ok();
    return failed("expected " + escaped(said.texts[0]) + ", the title is " + escaped(title));
}

static std::string under(const std::string& folder, const std::string& path) {
    return !path.empty() && path[0] == '/' ? path : folder + path;
}

static Answer doPicture(const Arguments& said) {
    const std::string path = under(gOutputFolder, said.texts[0]);
    const Picture frame = readFrame();
    if (frame == nullptr) return noFrame();
    if (!savePicture(*frame, path)) return failed("cannot write " + path + ": " + SDL_GetError());
    if (said.texts.size() == 1) return ok();
    const std::string golden = under(gPlayFolder, said.texts[1]);
    const Picture other = loadPicture(golden);
    if (other == nullptr) return failed(golden + " is no picture of 640 by 480 pixels");
    const int differing = differingPixels(*frame, *other);
    if (differing <= (said.numbers.empty() ? 0 : said.numbers[0]))
        return ok(std::to_string(differing));
    return failed(std::to_string(differing) + " pixels differ from " + golden);
}

static std::vector<std::string> recordsWith(int64_t list, const std::string& text) {
    std::vector<std::string> records;
    for (const std::string& record : kRecordLists[list]()) {
        if (record.find(text) != std::string::npos) records.push_back(record);
    }
    return records;
}

// A text that no record holds is a failure, which shows those that hold its first word.
static Answer doRecords(const Arguments& said) {
    const std::string text = said.texts.empty() ? "" : said.texts[0];
    Answer answer = ok();
    answer.records = recordsWith(said.numbers[0], text);
    answer.text = std::to_string(answer.records.size());
    if (!answer.records.empty() || said.texts.empty()) return answer;
    std::string reason = "no record has " + text;
    for (const std::string& record : recordsWith(said.numbers[0], text.substr(0, text.find(' '))))
        reason += "; " + record;
    return failed(reason);
}

// All of them -------------------------------------------------------------------------------------

#define BUTTON "left|middle|right|x1|x2"

struct Command {
    const char* form;  // see play/line.h
    bool acts;         // wants a level that goes on
    Answer (*run)(const Arguments& said);
};
static constexpr Command kCommands[] = {
    {"run MS", true, doRun},
    {"key down|up|tap KEY", true, doKey},
    {"mouse move ATX ATY", true, doMove},
    {"mouse down|up " BUTTON, true, doButton},
    {"mouse click " BUTTON " ATX ATY", true, doClick},
    {"mouse drag " BUTTON " ATX ATY ATX ATY", true, doDrag},
    {"close", true, doClose},
    {"ended closed|exitgame|0|1|abort|division|stuck", false, doEnded},  // as in LevelEnd
    {"expect TEXT [within MS]", false, doExpect},
    {"reject TEXT", false, doReject},
    {"output", false, doOutput},
    {"pixel X Y COLOUR", false, doPixel},
    {"count X Y W H COLOUR [is|over|under N]", false, doCount},
    {"title TEXT", false, doTitle},
    {"picture FILE [same as FILE [within N]]", false, doPicture},
    {"timers|images|texts|units [TEXT]", false, doRecords},
};

bool isEmptyLine(const std::string& line) {
    Fault fault;
    return splitLine(line, fault).size() == 1 && fault.text.empty();
}

static Answer run(const Command& command, const Arguments& said) {
    if (!command.acts || gLevelEnd == LevelEnd::None) return command.run(said);
    gEndSeen = true;
    return failed("the level has ended: " + endSentence());
}

Answer runCommand(const std::string& line) {
    Fault fault;
    const std::vector<Word> words = splitLine(line, fault);
    if (!fault.text.empty()) return {Answer::Kind::Error, fault.text, {}, fault.column};
    for (const Command& command : kCommands) {
        Arguments said;
        if (readForm(words, command.form, said, fault)) return run(command, said);
    }
    return {Answer::Kind::Error, misfit(words, fault), {}, fault.column};
}
