#include "check/line_ends.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

// A carriage return alone ends a line in files of old machines only.
static bool isBadLineEnd(const std::string& bytes, size_t i, bool anyLineFeed) {
    if (!anyLineFeed) return bytes[i] == '\r';
    return bytes[i] == '\n' && (i == 0 || bytes[i - 1] != '\r');
}

static bool hasLineFeed(const std::string& bytes) {
    return bytes.find('\n') != std::string::npos;
}

std::string withCrLf(const std::string& bytes) {
    const bool anyLineFeed = hasLineFeed(bytes);
    std::string result;
    for (size_t i = 0; i < bytes.size(); i++) {
        if (isBadLineEnd(bytes, i, anyLineFeed)) {
            result += "\r\n";
        } else {
            result += bytes[i];
        }
    }
    return result;
}

size_t countBadLineEnds(const std::string& bytes) {
    const bool anyLineFeed = hasLineFeed(bytes);
    size_t count = 0;
    for (size_t i = 0; i < bytes.size(); i++)
        count += isBadLineEnd(bytes, i, anyLineFeed) ? 1 : 0;
    return count;
}

static bool writeAll(int file, const std::string& bytes) {
    for (size_t done = 0; done < bytes.size();) {
        const ssize_t n = write(file, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno != EINTR) return false;
        if (n > 0) done += static_cast<size_t>(n);
    }
    return fsync(file) == 0;
}

// Writes a file beside `path` and renames it.
static bool writeAndRename(const std::string& path, const std::string& bytes, mode_t mode) {
    std::string temporary = path + ".XXXXXX";
    const int file = mkstemp(temporary.data());
    if (file < 0) return false;
    bool good = writeAll(file, bytes) && fchmod(file, mode) == 0;
    good = close(file) == 0 && good;
    good = good && rename(temporary.c_str(), path.c_str()) == 0;
    if (!good) {
        const int reason = errno;
        unlink(temporary.c_str());
        errno = reason;
    }
    return good;
}

bool replaceFile(const std::string& path, const std::string& bytes, std::string& reason) {
    char target[PATH_MAX];
    struct stat status = {};
    const bool good = realpath(path.c_str(), target) != nullptr && stat(target, &status) == 0 &&
                      access(target, W_OK) == 0 &&
                      writeAndRename(target, bytes, status.st_mode & 07777);
    if (!good) reason = std::strerror(errno);
    return good;
}
