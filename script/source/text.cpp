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

    constexpr char kDosEndOfFile = 26;
    const size_t count = std::fread(buffer, 1, kProgramCapacity, file);
    if (std::ferror(file) != 0) {  // a folder can be opened, but not read
        std::fclose(file);
        return false;
    }
    gProgramCut = count == kProgramCapacity;
    size_t end = gProgramCut ? count - 1 : count;  // room for the zero
    if (end > 0 && buffer[end - 1] == kDosEndOfFile) end--;
    buffer[end] = '\0';
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
