#include "play/recorder.h"

#include <SDL.h>

#include <string>

#include "play/commands.h"
#include "play/level.h"

static std::FILE* gFile = nullptr;
static uint64_t gWrittenMs = 0;      // the level's time up to which the play is written
static SDL_Point gPointer = {0, 0};  // as the play has it

static void writeRun(uint64_t endMs) {
    if (endMs > gWrittenMs)
        std::fprintf(gFile, "run %llu\n", static_cast<unsigned long long>(endMs - gWrittenMs));
}

// Runs a command and writes it, unless it was refused: a key may come up that went down elsewhere.
static void perform(const std::string& line) {
    const uint64_t startMs = levelTimeMs();
    if (runCommand(line).kind != Answer::Kind::Ok) return;
    writeRun(startMs);
    std::fprintf(gFile, "%s\n", line.c_str());
    std::fflush(gFile);
    gWrittenMs = levelTimeMs();
}

// Some keys share a name, some have none.
static void performKey(const SDL_KeyboardEvent& event) {
    const SDL_Scancode key = event.keysym.scancode;
    std::string name = SDL_GetScancodeName(key);
    if (SDL_GetScancodeFromName(name.c_str()) != key)
        name = "code " + std::to_string(static_cast<int>(key));
    perform((event.state == SDL_PRESSED ? "key down " : "key up ") + name);
}

static void performMotion(int x, int y) {
    perform("mouse move " + std::to_string(x) + ' ' + std::to_string(y));
    gPointer = {x, y};
}

static void performButton(const SDL_MouseButtonEvent& event) {
    static const char* const kButtons[] = {"left", "middle", "right", "x1", "x2"};
    if (event.button < SDL_BUTTON_LEFT || event.button > SDL_BUTTON_X2) return;
    if (event.x != gPointer.x || event.y != gPointer.y) performMotion(event.x, event.y);
    const std::string verb = event.state == SDL_PRESSED ? "mouse down " : "mouse up ";
    perform(verb + kButtons[event.button - SDL_BUTTON_LEFT]);
}

// Events that a play cannot say are left out, here and in every play.
static void performEvent(const SDL_Event& event) {
    const Uint32 type = event.type;
    if (type == SDL_KEYDOWN || type == SDL_KEYUP) performKey(event.key);
    if (type == SDL_MOUSEMOTION) performMotion(event.motion.x, event.motion.y);
    if (type == SDL_MOUSEBUTTONDOWN || type == SDL_MOUSEBUTTONUP) performButton(event.button);
    if (type == SDL_QUIT) perform("close");
}

void record(std::FILE* file) {
    gFile = file;
    gOnRealEvent = performEvent;
    while (gLevelEnd == LevelEnd::None)
        runLevel(gPassMs);
    writeRun(isEndUnexpected() ? levelTimeMs() : gWrittenMs);
    if (isEndUnexpected()) std::fprintf(file, "ended %s\n", endWord(gLevelEnd));
}
