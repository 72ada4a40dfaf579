#include "play/session.h"

#include <algorithm>
#include <filesystem>

#include "play/commands.h"
#include "play/level.h"
#include "play/looks.h"
#include "play/output.h"
#include "play/watch.h"

static std::string gPlace;  // path:line of the last command, or the path alone before the first

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
    gPlace = path + ':' + std::to_string(number);
    setWatchPlace(gPlace);
    return true;
}

static int statusOf(const Answer& answer) {
    if (answer.kind == Answer::Kind::Ok) return kPlayed;
    return answer.kind == Answer::Kind::Failed ? kFailed : kBadPlay;
}

// A file ------------------------------------------------------------------------------------------

static void tell(const std::string& text) {
    std::fprintf(stderr, "%s%s\n", gPlace.c_str(), text.c_str());
}

// Says why a play failed and saves what it saw last.
static int fail(const std::string& path, const std::string& reason) {
    tell(": failed: " + reason);
    const std::string picture =
        gOutputFolder + std::filesystem::path(path).stem().string() + "-failed.png";
    const Picture frame = readFrame();
    if (frame != nullptr && savePicture(*frame, picture)) tell(": the frame: " + picture);
    return kFailed;
}

static int report(const Answer& answer, const std::string& path) {
    for (const std::string& record : answer.records)
        std::fprintf(stderr, "%s\n", record.c_str());
    if (answer.kind == Answer::Kind::Failed) return fail(path, answer.text);
    if (answer.kind == Answer::Kind::Error)
        tell(':' + std::to_string(answer.column) + ": error: " + answer.text);
    else if (!answer.text.empty())
        tell(": " + answer.text);
    return statusOf(answer);
}

int playFile(std::FILE* file, const std::string& path) {
    std::string line;
    int number = 0;
    gPlace = path;
    while (readCommand(file, path, line, number)) {
        const int status = report(runCommand(line), path);
        if (status != kPlayed) return status;
    }
    if (gStopped) return fail(path, "the play was stopped from outside");
    return isEndUnexpected() ? fail(path, "the level has ended: " + endSentence()) : kPlayed;
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
