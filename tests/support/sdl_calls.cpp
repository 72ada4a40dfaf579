#include "support/sdl_calls.h"

#include <SDL.h>
#include <SDL_image.h>
#include <SDL_ttf.h>
#include <dlfcn.h>

#include <mutex>

#include "timers/timers.h"
#include "units/unit_movement.h"

static std::mutex gMutex;
static bool gRecording = false;
static std::vector<std::string> gCalls;

std::function<void(const std::string& call)> gOnCall;

void recordCalls() {
    const std::lock_guard<std::mutex> lock(gMutex);
    gRecording = true;
    gCalls.clear();
}

std::vector<std::string> recordedCalls() {
    const std::lock_guard<std::mutex> lock(gMutex);
    return gCalls;
}

static bool beginsWith(const std::string& call, const std::string& name) {
    return call.compare(0, name.size(), name) == 0;
}

std::vector<std::string> recordedCalls(const std::vector<std::string>& names) {
    std::vector<std::string> found;
    for (const std::string& call : recordedCalls()) {
        for (const std::string& name : names) {
            if (beginsWith(call, name)) found.push_back(call);
        }
    }
    return found;
}

size_t countCalls(const std::string& name) {
    return recordedCalls({name}).size();
}

void recordCall(const std::string& call) {
    {
        const std::lock_guard<std::mutex> lock(gMutex);
        if (!gRecording) return;
        gCalls.push_back(call);
    }
    if (gOnCall) gOnCall(call);
}

std::string callOn(const std::string& name, const void* texture) {
    return name + "(" + std::to_string(reinterpret_cast<uintptr_t>(texture)) + ")";
}

// The functions in place of the libraries' -------------------------------------------------------

static std::string shown(const std::string& text) {
    return text;
}

static std::string shown(int number) {
    return std::to_string(number);
}

static std::string shown(SDL_TimerCallback callback) {
    if (callback == stepAllTimers) return "stepAllTimers";
    return callback == stepAllUnits ? "stepAllUnits" : "another function";
}

// Records a call with what is shown of its arguments.
template <typename... Arguments>
static void record(const std::string& name, const Arguments&... arguments) {
    std::string list;
    ((list += (list.empty() ? "" : ", ") + shown(arguments)), ...);
    recordCall(name + "(" + list + ")");
}

// The library's own function.
#define REAL(function) reinterpret_cast<decltype(&(function))>(dlsym(RTLD_NEXT, #function))

int SDL_Init(Uint32 flags) {
    record("SDL_Init", static_cast<int>(flags));
    return REAL(SDL_Init)(flags);
}

void SDL_QuitSubSystem(Uint32 flags) {
    record("SDL_QuitSubSystem", static_cast<int>(flags));
    REAL(SDL_QuitSubSystem)(flags);
}

void SDL_Quit() {
    record("SDL_Quit");
    REAL(SDL_Quit)();
}

SDL_bool SDL_SetHint(const char* name, const char* value) {
    record("SDL_SetHint", name, value);
    return REAL(SDL_SetHint)(name, value);
}

SDL_Window* SDL_CreateWindow(const char* title, int x, int y, int w, int h, Uint32 flags) {
    record("SDL_CreateWindow", title, x, y, w, h, static_cast<int>(flags));
    return REAL(SDL_CreateWindow)(title, x, y, w, h, flags);
}

void SDL_DestroyWindow(SDL_Window* window) {
    record("SDL_DestroyWindow");
    REAL(SDL_DestroyWindow)(window);
}

void SDL_SetWindowTitle(SDL_Window* window, const char* title) {
    record("SDL_SetWindowTitle", title);
    REAL(SDL_SetWindowTitle)(window, title);
}

int SDL_SetWindowFullscreen(SDL_Window* window, Uint32 flags) {
    record("SDL_SetWindowFullscreen", static_cast<int>(flags));
    return REAL(SDL_SetWindowFullscreen)(window, flags);
}

SDL_Renderer* SDL_CreateRenderer(SDL_Window* window, int index, Uint32 flags) {
    record("SDL_CreateRenderer", index, static_cast<int>(flags));
    return REAL(SDL_CreateRenderer)(window, index, flags);
}

void SDL_DestroyRenderer(SDL_Renderer* renderer) {
    record("SDL_DestroyRenderer");
    REAL(SDL_DestroyRenderer)(renderer);
}

int SDL_SetRenderDrawColor(SDL_Renderer* renderer, Uint8 r, Uint8 g, Uint8 b, Uint8 a) {
    record("SDL_SetRenderDrawColor", r, g, b, a);
    return REAL(SDL_SetRenderDrawColor)(renderer, r, g, b, a);
}

int SDL_RenderClear(SDL_Renderer* renderer) {
    record("SDL_RenderClear");
    return REAL(SDL_RenderClear)(renderer);
}

int SDL_RenderCopy(SDL_Renderer* renderer, SDL_Texture* texture, const SDL_Rect* from,
                   const SDL_Rect* to) {
    record("SDL_RenderCopy", from == nullptr ? "whole" : "part", to->x, to->y, to->w, to->h);
    return REAL(SDL_RenderCopy)(renderer, texture, from, to);
}

void SDL_RenderPresent(SDL_Renderer* renderer) {
    record("SDL_RenderPresent");
    REAL(SDL_RenderPresent)(renderer);
}

void SDL_DestroyTexture(SDL_Texture* texture) {
    recordCall(callOn("SDL_DestroyTexture", texture));
    REAL(SDL_DestroyTexture)(texture);
}

const Uint8* SDL_GetKeyboardState(int* count) {
    record("SDL_GetKeyboardState");
    return REAL(SDL_GetKeyboardState)(count);
}

SDL_TimerID SDL_AddTimer(Uint32 interval, SDL_TimerCallback callback, void* parameter) {
    record("SDL_AddTimer", static_cast<int>(interval), callback);
    return REAL(SDL_AddTimer)(interval, callback, parameter);
}

void SDL_Delay(Uint32 ms) {
    record("SDL_Delay", static_cast<int>(ms));
    REAL(SDL_Delay)(ms);
}

SDL_Texture* IMG_LoadTexture(SDL_Renderer* renderer, const char* path) {
    record("IMG_LoadTexture", path);
    return REAL(IMG_LoadTexture)(renderer, path);
}

void IMG_Quit() {
    record("IMG_Quit");
    REAL(IMG_Quit)();
}

int TTF_Init() {
    record("TTF_Init");
    return REAL(TTF_Init)();
}

TTF_Font* TTF_OpenFont(const char* path, int pointSize) {
    record("TTF_OpenFont", path, pointSize);
    return REAL(TTF_OpenFont)(path, pointSize);
}

SDL_Surface* TTF_RenderUTF8_Solid(TTF_Font* font, const char* text, SDL_Color colour) {
    record("TTF_RenderUTF8_Solid", text, colour.r, colour.g, colour.b, colour.a);
    return REAL(TTF_RenderUTF8_Solid)(font, text, colour);
}

void TTF_CloseFont(TTF_Font* font) {
    record("TTF_CloseFont");
    REAL(TTF_CloseFont)(font);
}

void TTF_Quit() {
    record("TTF_Quit");
    REAL(TTF_Quit)();
}
