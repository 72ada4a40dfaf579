#include "play/session.h"

#include <algorithm>
#include <filesystem>

#include "play/commands.h"
#include "play/level.h"
#include "play/looks.h"
#include "play/output.h"
#include "play/watch.h"

static int statusOf(const Answer& answer) {
    if (answer.kind == Answer::Kind::Ok) return kPlayed;
    return answer.kind == Answer::Kind::Failed ? kFailed : kBadPlay;
}

static std::string placeOf(const std::string& path, int line) {
    return path + ':' + std::to_string(line);
}

// The next line that holds a command, without its end; `number` counts all lines. Returns false at
// the end of the input, or when someone wants to stop.
static bool readCommand(std::FILE* file, const std::string& path, std::string& line, int& number) {
    do {
        line.clear();
        number++;
        int c = std::getc(file);
        if (c == EOF || gStopped) return false;
        for (; c != EOF && c != '\n'; c = std::getc(file))
            line += static_cast<char>(c);
    } while (isEmptyLine(line));
    setWatchPlace(placeOf(path, number));
    return true;
}

// A file ------------------------------------------------------------------------------------------

static void tell(const std::string& place, const std::string& text) {
    std::fprintf(stderr, "%s%s\n", place.c_str(), text.c_str());
}

// Says why a play failed and saves what it saw last.
static int fail(const std::string& path, const std::string& place, const std::string& reason) {
    const std::string stem = std::filesystem::path(path).stem().string();
    const std::string picture = gOutputFolder + stem + "-failed.png";
    tell(place, ": failed: " + reason);
    const Picture frame = readFrame();
    if (frame != nullptr && savePicture(*frame, picture)) tell(place, ": the frame: " + picture);
    return kFailed;
}

static int report(const Answer& answer, const std::string& path, const std::string& place) {
    for (const std::string& record : answer.records)
        tell("", record);
    if (answer.kind == Answer::Kind::Failed) return fail(path, place, answer.text);
    if (answer.kind == Answer::Kind::Error)
        tell(place, ':' + std::to_string(answer.column) + ": error: " + answer.text);
    else if (!answer.text.empty())
        tell(place, ": " + answer.text);
    return statusOf(answer);
}

int playFile(std::FILE* file, const std::string& path) {
    std::string line;
    int number = 0;
    int last = 0;  // the line of the last command
    while (readCommand(file, path, line, number)) {
        last = number;
        const int status = report(runCommand(line), path, placeOf(path, number));
        if (status != kPlayed) return status;
    }
    const std::string place = last > 0 ? placeOf(path, last) : path;
    if (gStopped) return fail(path, place, "the play was stopped from outside");
    if (isEndUnexpected()) return fail(path, place, "the level has ended: " + endSentence());
    return kPlayed;
}

// A program ---------------------------------------------------------------------------------------

static std::string answerText(const Answer& answer) {
    static const char* const kHeads[] = {"ok", "failed", "error column "};
    std::string text = kHeads[static_cast<size_t>(answer.kind)];
    if (answer.kind == Answer::Kind::Error) text += std::to_string(answer.column) + ':';
    if (!answer.text.empty()) text += ' ' + answer.text;
    for (const std::string& record : answer.records)
        text += '\n' + record;
    return text + '\n';
}

int playInput(std::FILE* input) {
    int status = kPlayed;
    int number = 0;
    std::string line;
    while (readCommand(input, "-", line, number)) {
        const Answer answer = runCommand(line);
        writeOut(answerText(answer));
        status = std::max(status, statusOf(answer));
    }
    return gStopped ? std::max(status, kFailed) : status;
}
