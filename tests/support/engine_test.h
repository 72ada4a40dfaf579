// Fixtures and helpers for tests of the running engine: a working directory of its own for each
// test, ticks, keys and mouse without any waiting.
#pragma once

#include <SDL.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "app/base/input.h"
#include "app/base/paths.h"
#include "app/base/window.h"
#include "app/engine.h"
#include "app/frame.h"
#include "app/main_loop.h"
#include "script/run/program.h"
#include "script/run/variables.h"
#include "support/level.h"
#include "timers/timers.h"
#include "units/unit_movement.h"

constexpr Uint32 kWhite = 0xFFFFFF;
constexpr Uint32 kRed = 0xFF0000;
constexpr Uint32 kGreen = 0x00FF00;
constexpr Uint32 kBlue = 0x0000FF;     // the unit picture
constexpr Uint32 kMagenta = 0xFF00FF;  // the picture of the selection frame
constexpr Uint32 kGrey = 0x646464;     // the first colour of texts

// A working directory made for one test, with the font and the pictures that every level has.
class FolderTest : public testing::Test {
protected:
    FolderTest() {
        const std::filesystem::path font =
            std::filesystem::canonical(std::filesystem::current_path() / "arial.ttf");
        char name[] = "/tmp/zel_test_XXXXXX";
        folder_ = mkdtemp(name);
        outside_ = std::filesystem::current_path();
        std::filesystem::current_path(folder_);
        std::filesystem::create_symlink(font, "arial.ttf");
        writePicture("SysPics/select.bmp", 8, 8, kMagenta);
        writePicture("levels/level1/img/peon.bmp", 20, 30, kBlue);
    }

    ~FolderTest() override {
        std::filesystem::current_path(outside_);
        std::filesystem::remove_all(folder_);
    }

private:
    std::filesystem::path folder_;
    std::filesystem::path outside_;
};

// The engine up in such a folder, and shut down afterwards.
class EngineTest : public FolderTest {
protected:
    void SetUp() override { startEngine(); }
    void TearDown() override { closeEngine(); }
};

// Runs `statements` as the body of a main that declares int a, b, c first.
inline std::string runStatements(const std::string& statements) {
    return runLevel("int main() { int a, b, c; " + statements + " }");
}

// Calls a function of the loaded script and returns what it printed.
inline std::string outputOfCall(const char* name) {
    testing::internal::CaptureStdout();
    callScriptFunctionGuarded(name);
    return testing::internal::GetCapturedStdout();
}

// Runs the 1 ms tick `count` times and returns what the timers printed.
inline std::string tick(int count = 1) {
    testing::internal::CaptureStdout();
    for (int i = 0; i < count; i++)
        stepAllTimers(1, nullptr);
    return testing::internal::GetCapturedStdout();
}

inline void unitTick() {
    stepAllUnits(10, nullptr);
}

// Keys and mouse --------------------------------------------------------------------------------

// Marks a key as held in SDL's own array, which real events fill.
inline void hold(int scancode, bool held = true) {
    const_cast<Uint8*>(SDL_GetKeyboardState(nullptr))[scancode] = held ? 1 : 0;
}

inline void pushEvent(Uint32 type) {
    SDL_Event event;
    SDL_zero(event);
    event.type = type;
    ASSERT_EQ(1, SDL_PushEvent(&event));
}

inline void pushMotion(int x, int y) {
    SDL_Event event;
    SDL_zero(event);
    event.type = SDL_MOUSEMOTION;
    event.motion.x = x;
    event.motion.y = y;
    ASSERT_EQ(1, SDL_PushEvent(&event));
}

// `type` is SDL_MOUSEBUTTONDOWN or SDL_MOUSEBUTTONUP; button 1 is the left one, 3 the right one.
inline void pushButton(Uint32 type, Uint8 button, int x, int y) {
    SDL_Event event;
    SDL_zero(event);
    event.type = type;
    event.button.button = button;
    event.button.x = x;
    event.button.y = y;
    ASSERT_EQ(1, SDL_PushEvent(&event));
}

inline void pushClick(Uint8 button, int x, int y) {
    pushButton(SDL_MOUSEBUTTONDOWN, button, x, y);
    pushButton(SDL_MOUSEBUTTONUP, button, x, y);
}

inline void pushDrag(int x, int y, int toX, int toY) {
    pushButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, x, y);
    pushMotion(toX, toY);
    pushButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, toX, toY);
}

// Dispatches all queued events and returns what was printed meanwhile.
inline std::string drain() {
    return outputOf([] { drainEvents(); });
}

// One keyboard event with the keys as they are held now.
inline std::string keyEvent() {
    pushEvent(SDL_KEYDOWN);
    return drain();
}
