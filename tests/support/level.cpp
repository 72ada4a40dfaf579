#include "support/level.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "app/base/window.h"
#include "app/engine.h"
#include "app/frame.h"
#include "script/run/program.h"

// What the sanitizers ask for when they start. The graphics driver keeps memory when SDL
// unloads it, in code that no leak report can name; leaks of the engine show as growth in the soak
// test. Hostile pictures ask for more memory than there is.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() {
    return "detect_leaks=0:allocator_may_return_null=1";
}
extern "C" const char* __ubsan_default_options();
extern "C" const char* __ubsan_default_options() {
    return "print_stacktrace=1";
}

void writeFile(const std::string& path, const std::string& bytes) {
    const std::filesystem::path parent = std::filesystem::path(path).parent_path();
    if (!parent.empty()) std::filesystem::create_directories(parent);
    std::ofstream(path, std::ios::binary) << bytes;
}

static std::string withCarriageReturns(const std::string& text) {
    std::string result;
    for (char c : text) {
        if (c == '\n') result += '\r';
        result += c;
    }
    return result;
}

bool loadLevel(const std::string& script, bool raw) {
    // Tests run side by side in one working directory.
    static const std::string path = "script_" + std::to_string(getpid()) + ".txt";
    writeFile(path, raw ? script : withCarriageReturns(script));
    const bool loaded = loadScript(path.c_str());
    std::filesystem::remove(path);
    return loaded;
}

std::string runLevel(const std::string& script) {
    testing::internal::CaptureStdout();
    if (loadLevel(script)) runMain();
    return testing::internal::GetCapturedStdout();
}

std::string outputOf(void (*action)()) {
    testing::internal::CaptureStdout();
    action();
    return testing::internal::GetCapturedStdout();
}

std::string valueOf(const std::string& expression) {
    return runLevel("int main() { int a, b, c; print(" + expression + "); }");
}

void startEngine() {
    ASSERT_TRUE(initEngine());
}

Uint32 framePixel(int x, int y) {
    composeFrame();
    const SDL_Rect rect = {x, y, 1, 1};
    Uint32 pixel = 0;
    EXPECT_EQ(0, SDL_RenderReadPixels(gRenderer, &rect, SDL_PIXELFORMAT_ARGB8888, &pixel, 4));
    return pixel & 0xFFFFFF;
}

void writePicture(const std::string& path, int w, int h, Uint32 colour) {
    writeFile(path, "");
    SDL_Surface* surface = SDL_CreateRGBSurfaceWithFormat(0, w, h, 24, SDL_PIXELFORMAT_RGB24);
    SDL_FillRect(surface, nullptr,
                 SDL_MapRGB(surface->format, static_cast<Uint8>(colour >> 16),
                            static_cast<Uint8>(colour >> 8), static_cast<Uint8>(colour)));
    ASSERT_EQ(0, SDL_SaveBMP(surface, path.c_str()));
    SDL_FreeSurface(surface);
}
