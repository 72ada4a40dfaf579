#include "play/looks.h"

#include <cstdio>

#include "app/base/window.h"
#include "play/output.h"
#include "play/picture.h"
#include "play/records.h"

std::string gPlayFolder = "./";
std::string gOutputFolder = "./";

static Answer noFrame() {
    return failed("there is no frame: the engine is shut down");
}

static std::string colourText(Uint32 colour) {
    char text[10];
    std::snprintf(text, sizeof text, "#%06x", static_cast<unsigned>(colour & 0xFFFFFF));
    return text;
}

// pixel X Y COLOUR
Answer doPixel(Words& words) {
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
Answer doCount(Words& words) {
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
Answer doTitle(Words& words) {
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
Answer doPicture(Words& words) {
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

Answer doTimers(Words& words) {
    return answerRecords(words, timerRecords());
}
Answer doImages(Words& words) {
    return answerRecords(words, imageRecords());
}
Answer doTexts(Words& words) {
    return answerRecords(words, textRecords());
}
Answer doUnits(Words& words) {
    return answerRecords(words, unitRecords());
}
