#include "app/event_record.h"

#include <cstddef>
#include <cstring>

// Bytes from the start of the union that an event of this type means, by SDL_events.h. Types that
// are not listed carry nothing a script could read: their common head is kept.
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
        default:
            return sizeof(SDL_CommonEvent);
    }
}

SDL_Event filledPart(const SDL_Event& event) {
    SDL_Event filled;
    std::memset(&filled, 0, sizeof filled);
    std::memcpy(&filled, &event, filledSize(event.type));
    if (event.type == SDL_KEYDOWN || event.type == SDL_KEYUP) {
        // Two bytes of padding stand between the modifiers and the unused field.
        std::memset(reinterpret_cast<char*>(&filled.key.keysym.mod) + sizeof(Uint16), 0,
                    offsetof(SDL_Keysym, unused) - offsetof(SDL_Keysym, mod) - sizeof(Uint16));
    }
    if (event.type == SDL_TEXTINPUT) {
        // Only the text itself is filled in, not the rest of its field.
        std::memset(filled.text.text, 0, sizeof filled.text.text);
        std::memcpy(filled.text.text, event.text.text,
                    strnlen(event.text.text, sizeof event.text.text));
    }
    return filled;
}
