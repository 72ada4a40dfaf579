#include "app/main_loop.h"

#include <cstdio>

#include "app/base/input.h"
#include "app/base/main_thread.h"
#include "app/event_record.h"
#include "app/frame.h"
#include "app/ticks.h"
#include "keys/key_bindings.h"
#include "script/errors/recovery.h"
#include "units/selection.h"

const Uint8* gKeyboardState = nullptr;

void refreshKeyboardState() {
    gKeyboardState = gInput.keyStates();
}

void fireHeldKeys() {
    refreshKeyboardState();
    for (int32_t key = 0; key < kKeyCodes; key++) {
        if (gKeyboardState[key] != 0) fireKey(key);
    }
}

static void fireHeldKeysGuarded() {
    runGuarded([](const void*) { fireHeldKeys(); }, nullptr);
}

static void pressButton() {
    if (gEvent.button.button == SDL_BUTTON_LEFT) {
        gLeftButtonDown = true;
        startSelectionFrame();
    }
    if (gEvent.button.button == SDL_BUTTON_RIGHT) gRightButtonDown = true;
}

static void releaseButton() {
    if (gEvent.button.button == SDL_BUTTON_LEFT) {
        gLeftButtonDown = false;
        setVisible(selectionFrame(), false);
        if (!selectUnitsInFrame()) pickUnitAtPoint();
    }
    if (gEvent.button.button == SDL_BUTTON_RIGHT) {
        gRightButtonDown = false;
        commandSelectedUnits();
    }
}

static void dispatchEvent() {
    switch (gEvent.type) {
        case SDL_KEYDOWN:
        case SDL_KEYUP:
            fireHeldKeysGuarded();
            break;
        case SDL_MOUSEMOTION:
            onPointerMotion();
            break;
        case SDL_MOUSEBUTTONDOWN:
            pressButton();
            break;
        case SDL_MOUSEBUTTONUP:
            releaseButton();
            break;
        default:
            break;
    }
}

bool drainEvents() {
    bool quit = false;
    SDL_Event event;
    while (gInput.pollEvent(&event) != 0) {
        if (runMainThreadEvent(event)) continue;
        gEvent = filledPart(event);
        if (event.type == SDL_QUIT) quit = true;
        dispatchEvent();
    }
    return quit;
}

static void runTicksOfNow() {
    runDueTicks(gInput.nowMs());
}

Pass gPass = {drainEvents, runTicksOfNow, drawFrame};

bool runPass() {
    const bool quit = gPass.readEvents();
    gPass.runTicks();
    gPass.draw();
    std::fflush(stdout);
    return quit;
}

void runMainLoop() {
    while (!runPass()) {
    }
}
