// The main loop: what must hold after a pass.
#include "app/base/input.h"
#include "app/base/window.h"
#include "app/event_record.h"
#include "app/main_loop.h"
#include "images/images.h"
#include "simulation/player.h"
#include "simulation/rules.h"

// A picture that could not be loaded leaves its mark in the type.
static bool recordHolds(const SDL_Event& event) {
    return gEvent.type == event.type || gEvent.type == SDL_QUIT;
}

// The record holds what has been delivered; both buttons are as their last events say; the
// selection box shows while the left one is held.
void checkEventRules(const SDL_Event& event) {
    requireRule(recordHolds(event), "the event record holds the last event");
    if (event.type == SDL_MOUSEMOTION) {
        requireRule(gEvent.motion.x == event.motion.x && gEvent.motion.y == event.motion.y,
                    "the event record holds the pointer");
    }
    requireRule(gLeftButtonDown == leftIsDown(), "the left button is as its last event says");
    requireRule(gRightButtonDown == rightIsDown(), "the right button is as its last event says");
    followSelection(event);
    checkKeysOfEvent(event);
}

void checkAppRules(bool quitSeen) {
    requireRule(!eventsAreLeft(), "a pass dispatches every event, those after a quit too");
    requireRule(quitSeen == quitWasDelivered(), "a pass tells of the quit that it has seen");
    requireRule(gSystemPictures.size() == 1, "there is one system picture");
    requireRule(selectionFrame().path == "SysPics/select.bmp", "it is that of the selection");
    requireRule(isVisible(selectionFrame()) == gLeftButtonDown,
                "the selection box shows while the left button is held");
    requireRule(gWindow != nullptr && gRenderer != nullptr, "the handles keep their values");
}
