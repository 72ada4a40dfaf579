#include "script/source/text.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

const char* gProgramBuffer = nullptr;
const char* gProgramEnd = nullptr;
const char* gProgramPath = "";
bool gProgramCut = false;

bool readProgramFile(char* buffer, const char* path) {
    FILE* file = std::fopen(path, "rb");
    if (file == nullptr) return false;

    // The end-of-file value is stored like a byte and then overwritten by the terminating zero,
    // so a file shorter than the buffer keeps all its bytes and a longer one loses its tail.
    constexpr char kDosEndOfFile = 26;
    size_t stored = 0;
    while (stored < kProgramCapacity && std::feof(file) == 0 && std::ferror(file) == 0) {
        buffer[stored++] = static_cast<char>(std::fgetc(file));
    }
    if (std::ferror(file) != 0) {  // a folder can be opened, but not read
        std::fclose(file);
        return false;
    }
    gProgramCut = stored == kProgramCapacity && std::feof(file) == 0;
    const bool marked = stored >= 2 && buffer[stored - 2] == kDosEndOfFile;
    buffer[marked ? stored - 2 : stored - 1] = '\0';
    std::fclose(file);
    return true;
}

void setProgramText(const char* buffer, const char* path) {
    gProgramBuffer = buffer;
    gProgramEnd = buffer + std::strlen(buffer);
    gProgramPath = path;
}

static bool endsLine(std::string_view text, size_t i) {
    if (text[i] == '\n') return true;
    return text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n');
}

TextPlace textPlaceIn(std::string_view text, size_t position) {
    size_t line = 1;
    size_t lineStart = 0;
    for (size_t i = 0; i < std::min(position, text.size()); i++) {
        if (!endsLine(text, i)) continue;
        line++;
        lineStart = i + 1;
    }
    return {line, position - lineStart + 1};
}

TextPlace textPlaceOf(const char* position) {
    const char* const place = std::min(position, gProgramEnd);
    const size_t size = static_cast<size_t>(gProgramEnd - gProgramBuffer);
    return textPlaceIn({gProgramBuffer, size}, static_cast<size_t>(place - gProgramBuffer));
}
