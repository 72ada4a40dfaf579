// A record of the engine's calls to SDL, SDL_image and SDL_ttf: which, with what, in which order.
//
// The functions are in the test executable, which the linker prefers to the libraries, and pass
// every call on. What the libraries call within themselves is not seen.
#pragma once

#include <functional>
#include <string>
#include <vector>

// Forgets the calls recorded so far and records from now on, on every thread.
void recordCalls();

// The calls since then, as "name(arguments)". Hints and texts are bare; of windows, renderers and
// fonts nothing is shown, of textures what callOn shows.
std::vector<std::string> recordedCalls();

// Those of them that begin with one of `names`.
std::vector<std::string> recordedCalls(const std::vector<std::string>& names);

// How many of them begin with `name`.
size_t countCalls(const std::string& name);

// Puts an event of the test's own into the record.
void recordCall(const std::string& call);

// "name(texture)", where the texture is told by its address.
std::string callOn(const std::string& name, const void* texture);

// Runs once a call has been recorded, on its thread, before the call is passed on.
extern std::function<void(const std::string& call)> gOnCall;
