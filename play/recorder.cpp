#include "play/recorder.h"

#include <SDL.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "play/commands.h"
#include "play/level.h"

static std::FILE* gFile = nullptr;
static uint64_t gUnwrittenMs = 0;  // of passes since the last line

static void writeRun() {
    if (gUnwrittenMs == 0) return;
    std::fprintf(gFile, "run %llu\n", static_cast<unsigned long long>(gUnwrittenMs));
    gUnwrittenMs = 0;
}

// Runs a command and writes it, unless it was refused: a key may come up that went down elsewhere.
static void perform(const std::string& line) {
    if (runCommand(line).kind != Answer::Kind::Ok) return;
    writeRun();
    std::fprintf(gFile, "%s\n", line.c_str());
    std::fflush(gFile);
}

// The key as a play names it. Some keys share a name, some have none.
static std::string keyName(SDL_Scancode key) {
    const std::string name = SDL_GetScancodeName(key);
    const bool isGood = !name.empty() && SDL_GetScancodeFromName(name.c_str()) == key;
    return isGood ? name : "code " + std::to_string(static_cast<int>(key));
}

static SDL_Point gPointer = {0, 0};  // as the play has it

static void performMotion(int x, int y) {
    perform("mouse move " + std::to_string(x) + ' ' + std::to_string(y));
    gPointer = {x, y};
}

static void performButton(const SDL_MouseButtonEvent& button) {
    static const char* const kButtons[] = {"left", "middle", "right", "x1", "x2"};
    if (button.button < SDL_BUTTON_LEFT || button.button > SDL_BUTTON_X2) return;
    if (button.x != gPointer.x || button.y != gPointer.y) performMotion(button.x, button.y);
    const std::string verb = button.state == SDL_PRESSED ? "mouse down " : "mouse up ";
    perform(verb + kButtons[button.button - SDL_BUTTON_LEFT]);
}

static void performKey(const SDL_KeyboardEvent& key) {
    const std::string verb = key.state == SDL_PRESSED ? "key down " : "key up ";
    perform(verb + keyName(key.keysym.scancode));
}

// Events that a play cannot say are left out, here and in every play.
static void performEvent(const SDL_Event& event) {
    const Uint32 type = event.type;
    if (type == SDL_KEYDOWN || type == SDL_KEYUP) performKey(event.key);
    if (type == SDL_MOUSEMOTION) performMotion(event.motion.x, event.motion.y);
    if (type == SDL_MOUSEBUTTONDOWN || type == SDL_MOUSEBUTTONUP) performButton(event.button);
    if (type == SDL_QUIT) perform("close");
}

static void performEvents() {
    SDL_Event event;
    while (gLevelEnd == LevelEnd::None && SDL_PollEvent(&event) != 0)
        performEvent(event);
}

// Runs the passes that are due; the last one is drawn.
static void catchUp(uint64_t realMs) {
    constexpr uint64_t kMostPasses = 15;  // after a long stop the level goes on from where it stood
    static uint64_t lateMs = 0;
    const uint64_t due = (realMs - lateMs - std::min(realMs - lateMs, levelTimeMs())) / gPassMs;
    const uint64_t passes = std::min(due, kMostPasses);
    lateMs += (due - passes) * gPassMs;
    for (uint64_t i = 1; i <= passes && gLevelEnd == LevelEnd::None; i++) {
        runLevelPass(gPassMs, i == passes);
        gUnwrittenMs += gPassMs;
    }
    if (passes == 0) SDL_Delay(1);
}

void record(std::FILE* file) {
    gFile = file;
    const uint64_t startMs = SDL_GetTicks64();
    while (gLevelEnd == LevelEnd::None) {
        performEvents();
        catchUp(SDL_GetTicks64() - startMs);
    }
    writeRun();
    if (isEndUnexpected()) std::fprintf(file, "ended %s\n", endWord(gLevelEnd));
}
