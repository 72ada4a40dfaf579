#include "app/event_record.h"

#include <cstddef>
#include <cstring>

// A text event fills its text, not the rest of the field.
template <size_t size>
static void clearAfterText(char (&text)[size]) {
    const size_t length = strnlen(text, size);
    std::memset(text + length, 0, size - length);
}

// Bytes from the start of the union that an event of this type means, by SDL_events.h. Types that
// are not listed have nothing where scripts look (getmousex): their common head is kept.
static size_t filledSize(Uint32 type) {
    switch (type) {
        case SDL_WINDOWEVENT:
            return offsetof(SDL_WindowEvent, data2) + sizeof(Sint32);
        case SDL_KEYDOWN:
        case SDL_KEYUP:
            return offsetof(SDL_KeyboardEvent, keysym) + offsetof(SDL_Keysym, unused);
        case SDL_TEXTEDITING:
            return sizeof(SDL_TextEditingEvent);
        case SDL_TEXTINPUT:
            return sizeof(SDL_TextInputEvent);
        case SDL_MOUSEMOTION:
            return sizeof(SDL_MouseMotionEvent);
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP:
            return sizeof(SDL_MouseButtonEvent);
        case SDL_MOUSEWHEEL:
            return sizeof(SDL_MouseWheelEvent);
        case SDL_FINGERDOWN:
        case SDL_FINGERUP:
        case SDL_FINGERMOTION:
            return offsetof(SDL_TouchFingerEvent, pressure) + sizeof(float);
        case SDL_MULTIGESTURE:
            return offsetof(SDL_MultiGestureEvent, numFingers) + sizeof(Uint16);
        case SDL_DOLLARGESTURE:
        case SDL_DOLLARRECORD:
            return offsetof(SDL_DollarGestureEvent, y) + sizeof(float);
        default:
            return sizeof(SDL_CommonEvent);
    }
}

SDL_Event filledPart(const SDL_Event& event) {
    SDL_Event filled;
    std::memset(&filled, 0, sizeof filled);
    std::memcpy(&filled, &event, filledSize(event.type));
    if (event.type == SDL_KEYDOWN || event.type == SDL_KEYUP) {
        // There are two bytes of padding between the modifiers and the unused field.
        std::memset(reinterpret_cast<char*>(&filled.key.keysym.mod) + sizeof(Uint16), 0,
                    offsetof(SDL_Keysym, unused) - offsetof(SDL_Keysym, mod) - sizeof(Uint16));
    }
    if (event.type == SDL_TEXTINPUT) clearAfterText(filled.text.text);
    if (event.type == SDL_TEXTEDITING) clearAfterText(filled.edit.text);
    return filled;
}
