#include "play/session.h"

#include <algorithm>
#include <filesystem>

#include "play/commands.h"
#include "play/level.h"
#include "play/looks.h"
#include "play/output.h"
#include "play/pace.h"
#include "play/picture.h"
#include "play/watch.h"

static int statusOf(const Answer& answer) {
    if (answer.kind == Answer::Kind::Ok) return kPlayed;
    return answer.kind == Answer::Kind::Failed ? kFailed : kBadPlay;
}

// The next line without its end. Returns false at the end of the input.
static bool readLine(std::FILE* file, std::string& line) {
    line.clear();
    int c = std::getc(file);
    if (c == EOF) return false;
    for (; c != EOF && c != '\n'; c = std::getc(file))
        line += static_cast<char>(c);
    return true;
}

// A file ----------------------------------------------------------------------------------------

static void tell(const std::string& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
}

// Saves what a failed play saw last.
static void keepEvidence(const std::string& path, const std::string& place) {
    const std::string name = std::filesystem::path(path).stem().string() + "-failed.png";
    Frame frame;
    if (!readFrame(frame)) return;
    if (saveFrame(frame, gOutputFolder + name))
        tell(place + ": the frame: " + gOutputFolder + name);
}

static int fail(const std::string& path, const std::string& place, const std::string& reason) {
    tell(place + ": failed: " + reason);
    keepEvidence(path, place);
    return kFailed;
}

static int report(const Answer& answer, const std::string& path, const std::string& place) {
    for (const std::string& record : answer.records)
        tell(record);
    if (answer.kind == Answer::Kind::Error) {
        tell(place + ':' + std::to_string(answer.column) + ": error: " + answer.text);
        return kBadPlay;
    }
    if (answer.kind == Answer::Kind::Failed) return fail(path, place, answer.text);
    if (!answer.text.empty()) tell(place + ": " + answer.text);
    return kPlayed;
}

int playFile(std::FILE* file, const std::string& path) {
    std::string line;
    std::string place = path;
    int status = kPlayed;
    for (int number = 1; status == kPlayed && !gStopped && readLine(file, line); number++) {
        if (isEmptyLine(line)) continue;
        place = path + ':' + std::to_string(number);
        setWatchPlace(place, false);
        status = report(runCommand(line), path, place);
    }
    if (status != kPlayed) return status;
    if (gStopped) return fail(path, place, "the play was stopped from outside");
    if (isEndUnexpected()) return fail(path, place, "the level has ended: " + endSentence());
    return kPlayed;
}

// A program -------------------------------------------------------------------------------------

static std::string answerLine(const Answer& answer) {
    if (answer.kind == Answer::Kind::Ok) return answer.text.empty() ? "ok" : "ok " + answer.text;
    if (answer.kind == Answer::Kind::Failed) return "failed " + answer.text;
    return "error column " + std::to_string(answer.column) + ": " + answer.text;
}

int playInput(std::FILE* input) {
    int status = kPlayed;
    std::string line;
    setWatchPlace("failed", true);
    while (!gStopped && readLine(input, line)) {
        if (isEmptyLine(line)) continue;
        const Answer answer = runCommand(line);
        std::string text = answerLine(answer) + '\n';
        for (const std::string& record : answer.records)
            text += record + '\n';
        writeOut(text);
        status = std::max(status, statusOf(answer));
    }
    return gStopped ? std::max(status, kFailed) : status;
}
