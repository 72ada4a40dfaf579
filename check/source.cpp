#include "check/source.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "script/source/text.h"

// What the engine keeps: as many bytes as its buffer holds, a DOS end-of-file mark at the end
// dropped, and nothing from the first zero byte on. It stores the end-of-file value after a short
// file and then writes its terminating zero over the last byte stored.
static std::string engineText(const std::string& bytes) {
    constexpr char kDosEndOfFile = 26;
    size_t last = std::min(bytes.size(), kProgramCapacity - 1);
    if (last > 0 && bytes[last - 1] == kDosEndOfFile) last--;
    return bytes.substr(0, std::min(last, bytes.find('\0')));
}

Source makeSource(std::string path, std::string bytes) {
    Source source;
    source.path = std::move(path);
    source.bytes = std::move(bytes);
    source.text = engineText(source.bytes);
    return source;
}

std::string_view Source::lineAt(size_t position) const {
    const size_t start = position + 1 - placeOf(position).column;
    const size_t end = text.find_first_of("\r\n", start);
    return std::string_view(text).substr(start, end == std::string::npos ? end : end - start);
}

bool readFile(const std::string& path, std::string& bytes, std::string& reason) {
    FILE* file = std::fopen(path.c_str(), "rb");
    if (file != nullptr) {
        char buffer[4096];
        for (size_t n; (n = std::fread(buffer, 1, sizeof buffer, file)) > 0;)
            bytes.append(buffer, n);
    }
    const bool good = file != nullptr && std::ferror(file) == 0;
    if (!good) reason = std::strerror(errno);
    if (file != nullptr) std::fclose(file);
    return good;
}
