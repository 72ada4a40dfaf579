#include "play/output.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>

std::string gPrinted;

static int gRealOutput = STDOUT_FILENO;
static bool gPassOn = false;
static off_t gTaken = 0;  // bytes of the caught output that are in gPrinted

bool catchOutput(bool passOn) {
    const int caught = memfd_create("zelplay", MFD_CLOEXEC);
    gRealOutput = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
    if (caught < 0 || gRealOutput < 0 || dup2(caught, STDOUT_FILENO) < 0) return false;
    // Without a buffer nothing is lost in it, wherever the level ends or hangs.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    gPassOn = passOn;
    return std::freopen("/dev/null", "r", stdin) != nullptr;
}

static void writeBytes(const char* bytes, size_t size) {
    while (size > 0) {
        const ssize_t written = write(gRealOutput, bytes, size);
        if (written <= 0) return;
        bytes += written;
        size -= static_cast<size_t>(written);
    }
}

// Reads at a place of its own: the level's writes and these reads share one file offset.
static size_t readCaught(char* bytes, size_t size) {
    const ssize_t got = pread(STDOUT_FILENO, bytes, size, gTaken);
    if (got <= 0) return 0;
    gTaken += got;
    if (gPassOn) writeBytes(bytes, static_cast<size_t>(got));
    return static_cast<size_t>(got);
}

void takeOutput() {
    char bytes[4096];
    while (const size_t size = readCaught(bytes, sizeof bytes))
        gPrinted.append(bytes, size);
}

void passOnRest() {
    char bytes[4096];
    while (readCaught(bytes, sizeof bytes) > 0) {
    }
}

void writeOut(const std::string& text) {
    writeBytes(text.data(), text.size());
}

std::string escaped(const std::string& text) {
    static const std::string kPlain = "\n\r\t\"\\";
    std::string result = "\"";
    for (const char c : text) {
        const size_t index = kPlain.find(c);
        char code[5] = {c};
        if (index != std::string::npos)
            std::snprintf(code, sizeof code, "\\%c", "nrt\"\\"[index]);
        else if ((c >= 0 && c < ' ') || c == 0x7F)
            std::snprintf(code, sizeof code, "\\x%02x", static_cast<unsigned>(c));
        result += code;
    }
    return result + '"';
}
