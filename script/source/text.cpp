#include "script/source/text.h"

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
