#include "play/hands.h"

#include <cstring>
#include <deque>

#include "app/base/input.h"
#include "app/base/window.h"

static std::deque<SDL_Event> gQueue;

// As of the events taken, and as of all events made: what the engine sees, and where the hands are.
static Uint8 gHeld[SDL_NUM_SCANCODES];
static Uint8 gFingers[SDL_NUM_SCANCODES];
static SDL_Point gPointer = {0, 0};
static Uint32 gButtons = 0;  // bits by SDL_BUTTON

// Taking ------------------------------------------------------------------------------------------

int takeEvent(SDL_Event* event) {
    if (gEngineClosed || gQueue.empty()) return 0;
    *event = gQueue.front();
    gQueue.pop_front();
    const bool isKey = event->type == SDL_KEYDOWN || event->type == SDL_KEYUP;
    if (isKey) gHeld[event->key.keysym.scancode] = event->key.state;
    return 1;
}

const Uint8* heldKeys() {
    return gHeld;
}

// Making ------------------------------------------------------------------------------------------

static SDL_Event newEvent(Uint32 type) {
    SDL_Event event;
    SDL_zero(event);
    event.type = type;
    event.common.timestamp = static_cast<Uint32>(gInput.nowMs());
    // The window's number is at the same place in all events that have one.
    if (type != SDL_QUIT && !gEngineClosed) event.key.windowID = SDL_GetWindowID(gWindow);
    return event;
}

// The symbol of a key on the usual American layout. SDL's own answer depends on the layout of the
// machine, and a script can see the symbol.
static SDL_Keycode usualSymbol(SDL_Scancode key) {
    static const char kLetters[] = "abcdefghijklmnopqrstuvwxyz1234567890\r\x1b\b\t -=[]\\#;'`,./";
    constexpr size_t kCount = sizeof kLetters - 1;
    if (key == SDL_SCANCODE_UNKNOWN) return SDLK_UNKNOWN;
    if (key == SDL_SCANCODE_DELETE) return SDLK_DELETE;
    const size_t index = static_cast<size_t>(key) - SDL_SCANCODE_A;
    if (key >= SDL_SCANCODE_A && index < kCount) return kLetters[index];
    return static_cast<SDL_Keycode>(SDL_SCANCODE_TO_KEYCODE(static_cast<int>(key)));
}

static Uint16 heldModifiers() {
    static constexpr Uint16 kBits[] = {KMOD_LCTRL, KMOD_LSHIFT, KMOD_LALT, KMOD_LGUI,
                                       KMOD_RCTRL, KMOD_RSHIFT, KMOD_RALT, KMOD_RGUI};
    unsigned modifiers = 0;
    for (size_t i = 0; i < 8; i++)
        modifiers |= gFingers[SDL_SCANCODE_LCTRL + i] != 0 ? kBits[i] : 0u;
    return static_cast<Uint16>(modifiers);
}

static void makeKeyEvent(Uint32 type, SDL_Scancode key, bool repeats) {
    SDL_Event event = newEvent(type);
    event.key.state = gFingers[key];
    event.key.repeat = repeats ? 1 : 0;
    event.key.keysym.scancode = key;
    event.key.keysym.sym = usualSymbol(key);
    event.key.keysym.mod = heldModifiers();
    gQueue.push_back(event);
}

// What a key types on that layout; zero if nothing.
static char typedCharacter(SDL_Keycode symbol, Uint16 modifiers) {
    static const char kShifted[] = "1!2@3#4$5%6^7&8*9(0)-_=+[{]}\\|;:'\"`~,<.>/?";
    if (symbol < ' ' || symbol > '~') return 0;
    if ((modifiers & (KMOD_CTRL | KMOD_ALT | KMOD_GUI)) != 0) return 0;
    const char typed = static_cast<char>(symbol);
    if ((modifiers & KMOD_SHIFT) == 0) return typed;
    if (typed >= 'a' && typed <= 'z') return static_cast<char>(typed - 'a' + 'A');
    const char* pair = std::strchr(kShifted, typed);
    return pair == nullptr ? typed : pair[1];
}

// A key that types a character is followed by an event with that text, as SDL does it. Scripts can
// see it: getmousex then looks into that event.
static void makeTextEvent(SDL_Scancode key) {
    SDL_Event event = newEvent(SDL_TEXTINPUT);
    event.text.text[0] = typedCharacter(usualSymbol(key), heldModifiers());
    if (event.text.text[0] != 0) gQueue.push_back(event);
}

void pressKey(SDL_Scancode key) {
    const bool repeats = gFingers[key] != 0;
    gFingers[key] = SDL_PRESSED;
    makeKeyEvent(SDL_KEYDOWN, key, repeats);
    makeTextEvent(key);
}

bool releaseKey(SDL_Scancode key) {
    if (gFingers[key] == SDL_RELEASED) return false;
    gFingers[key] = SDL_RELEASED;
    makeKeyEvent(SDL_KEYUP, key, false);
    return true;
}

void movePointer(int x, int y) {
    SDL_Event event = newEvent(SDL_MOUSEMOTION);
    event.motion.state = gButtons;
    event.motion.x = x;
    event.motion.y = y;
    event.motion.xrel = x - gPointer.x;
    event.motion.yrel = y - gPointer.y;
    gPointer = {x, y};
    gQueue.push_back(event);
}

void bringPointer(int x, int y) {
    if (x != gPointer.x || y != gPointer.y) movePointer(x, y);
}

static void makeButtonEvent(Uint32 type, Uint8 button, Uint8 state) {
    SDL_Event event = newEvent(type);
    event.button.button = button;
    event.button.state = state;
    event.button.clicks = 1;
    event.button.x = gPointer.x;
    event.button.y = gPointer.y;
    gQueue.push_back(event);
}

void pressButton(Uint8 button) {
    gButtons |= static_cast<Uint32>(SDL_BUTTON(button));
    makeButtonEvent(SDL_MOUSEBUTTONDOWN, button, SDL_PRESSED);
}

bool releaseButton(Uint8 button) {
    const Uint32 bit = static_cast<Uint32>(SDL_BUTTON(button));
    if ((gButtons & bit) == 0) return false;
    gButtons &= ~bit;
    makeButtonEvent(SDL_MOUSEBUTTONUP, button, SDL_RELEASED);
    return true;
}

void pressClose() {
    gQueue.push_back(newEvent(SDL_QUIT));
}
