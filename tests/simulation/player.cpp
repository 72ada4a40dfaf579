#include "simulation/player.h"

#include <SDL.h>

#include <cstddef>
#include <vector>

#include "app/base/input.h"
#include "keys/key_bindings.h"
#include "simulation/level_arguments.h"
#include "simulation/random.h"
#include "simulation/rules.h"

bool gPassIsSlow = false;

static Random gDice;

// The clock. Each look at it takes a while in a slow pass.
static uint64_t gStartMs = 0;
static uint64_t gNowMs = 0;
static uint64_t gLookMs = 0;

static Uint8 gKeys[SDL_NUM_SCANCODES];
static std::vector<SDL_Event> gEvents;  // of this pass
static size_t gNextEvent = 0;
static bool gQuitDelivered = false;
static bool gLeftDown = false;
static bool gRightDown = false;
static int32_t gMouseX = 0;
static int32_t gMouseY = 0;

// Events -----------------------------------------------------------------------------------------

static SDL_Event& addEvent(Uint32 type) {
    SDL_Event event;
    SDL_zero(event);
    event.type = type;
    gEvents.push_back(event);
    return gEvents.back();
}

static void moveMouse(int32_t x, int32_t y) {
    gMouseX = x;
    gMouseY = y;
    SDL_Event& event = addEvent(SDL_MOUSEMOTION);
    event.motion.x = x;
    event.motion.y = y;
}

static void moveMouseAnywhere() {
    const bool outside = randomChance(gDice, 30);
    moveMouse(randomBetween(gDice, outside ? -3000 : 0, outside ? 3000 : 639),
              randomBetween(gDice, outside ? -3000 : 0, outside ? 3000 : 479));
}

static void useButton(Uint32 type, Uint8 button) {
    SDL_Event& event = addEvent(type);
    event.button.button = button;
    event.button.x = gMouseX;
    event.button.y = gMouseY;
}

static void useAnyButton() {
    const Uint32 type = randomChance(gDice, 500) ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
    useButton(type, static_cast<Uint8>(randomBetween(gDice, 1, 4)));
}

static void click() {
    const Uint8 button = randomChance(gDice, 500) ? SDL_BUTTON_LEFT : SDL_BUTTON_RIGHT;
    useButton(SDL_MOUSEBUTTONDOWN, button);
    useButton(SDL_MOUSEBUTTONUP, button);
}

static void drag() {
    moveMouse(randomBetween(gDice, 0, 300), randomBetween(gDice, 0, 200));
    useButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT);
    for (int32_t i = randomBelow(gDice, 4); i > 0; i--)
        moveMouseAnywhere();
    useButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT);
}

static void useKey() {
    const int32_t key = randomChance(gDice, 850) ? pickFrom(gDice, kUsualKeys)
                                                 : randomBelow(gDice, SDL_NUM_SCANCODES);
    SDL_Event& event = addEvent(randomChance(gDice, 550) ? SDL_KEYDOWN : SDL_KEYUP);
    event.key.keysym.scancode = static_cast<SDL_Scancode>(key);
    event.key.keysym.sym = randomBetween(gDice, 0, 1000);
}

static void sendOtherEvent() {
    static const Uint32 kTypes[] = {SDL_WINDOWEVENT,   SDL_MOUSEWHEEL,      SDL_TEXTINPUT,
                                    SDL_KEYMAPCHANGED, SDL_JOYAXISMOTION,   SDL_APP_LOWMEMORY,
                                    SDL_FINGERDOWN,    SDL_CLIPBOARDUPDATE, SDL_SYSWMEVENT};
    SDL_Event& event = addEvent(pickFrom(gDice, kTypes));
    if (event.type != SDL_WINDOWEVENT) return;
    event.window.event = static_cast<Uint8>(randomBetween(gDice, 1, 16));
    event.window.data1 = randomBetween(gDice, -100, 2000);
    event.window.data2 = randomBetween(gDice, -100, 2000);
}

static void actOnce() {
    static void (*const kActions[])() = {
        useKey, useKey, useKey,       useKey, moveMouseAnywhere, moveMouseAnywhere,
        click,  drag,   useAnyButton, click,  sendOtherEvent};
    pickFrom(gDice, kActions)();
}

// What the event changes at the moment when it is delivered.
static void followEvent(const SDL_Event& event) {
    if (event.type == SDL_QUIT) gQuitDelivered = true;
    if (event.type == SDL_KEYDOWN) gKeys[event.key.keysym.scancode] = 1;
    if (event.type == SDL_KEYUP) gKeys[event.key.keysym.scancode] = 0;
    if (event.type != SDL_MOUSEBUTTONDOWN && event.type != SDL_MOUSEBUTTONUP) return;
    const bool down = event.type == SDL_MOUSEBUTTONDOWN;
    if (event.button.button == SDL_BUTTON_LEFT) gLeftDown = down;
    if (event.button.button == SDL_BUTTON_RIGHT) gRightDown = down;
}

// In SDL's place ---------------------------------------------------------------------------------

static uint64_t nowMs() {
    gNowMs += gLookMs;
    return gNowMs;
}

static int pollEvent(SDL_Event* event) {
    if (gNextEvent > 0) checkEventRules(gEvents[gNextEvent - 1]);
    if (gNextEvent == gEvents.size()) {
        gEvents.clear();
        gNextEvent = 0;
        return 0;
    }
    *event = gEvents[gNextEvent++];
    followEvent(*event);
    return 1;
}

static const Uint8* keyStates() {
    return gKeys;
}

void startPlayer(uint64_t seed) {
    gDice = Random{~seed};
    gStartMs = gNowMs = static_cast<uint64_t>(randomBelow(gDice, 100000));
    gInput = {nowMs, pollEvent, keyStates};
}

// Passes -----------------------------------------------------------------------------------------

// A frame takes 16 ms; some passes are faster, some are so slow that ticks are dropped.
static uint64_t passMs() {
    if (randomChance(gDice, 960)) return 16;
    static const uint64_t kOddPasses[] = {0, 1, 1, 1, 7, 33, 100, 249, 250, 251, 300, 2000};
    return pickFrom(gDice, kOddPasses);
}

void beginPlayersPass() {
    gNowMs += passMs();
    gPassIsSlow = randomChance(gDice, 5);
    gLookMs = gPassIsSlow ? static_cast<uint64_t>(randomBetween(gDice, 1, 40)) : 0;
    if (randomChance(gDice, 3)) SDL_zero(gKeys);  // the focus is lost: no event tells of it
    if (!randomChance(gDice, 120)) return;
    for (int32_t i = randomBetween(gDice, 1, randomChance(gDice, 30) ? 60 : 3); i > 0; i--)
        actOnce();
}

void closeByPlayer() {
    addEvent(SDL_QUIT);
    if (randomChance(gDice, 500)) useKey();
}

uint64_t playedMs() {
    return gNowMs - gStartMs;
}

bool eventsAreLeft() {
    return !gEvents.empty();
}

bool quitWasDelivered() {
    return gQuitDelivered;
}
bool leftIsDown() {
    return gLeftDown;
}
bool rightIsDown() {
    return gRightDown;
}

bool isHeld(int32_t key) {
    return gKeys[key] != 0;
}

int32_t heldKeys() {
    int32_t count = 0;
    for (int32_t key = 0; key < kKeyCodes; key++)
        count += isHeld(key) ? 1 : 0;
    return count;
}
