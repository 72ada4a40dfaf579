// Line ends: the engine knows CR LF only.
#pragma once

#include <string>

// The text with every bare line feed made CR LF. In a file without any line feed the carriage
// returns are the line ends. Everything else stays byte for byte.
std::string withCrLf(const std::string& bytes);

// How many line ends withCrLf would fix.
size_t countBadLineEnds(const std::string& bytes);

// Puts `bytes` in place of the file at `path`: whoever reads it sees the old content or the new
// one, never a part. Keeps the file's permissions; a link goes on pointing at the same file.
// Returns false, with the reason in `reason`.
bool replaceFile(const std::string& path, const std::string& bytes, std::string& reason);
