#include "check/check.h"

#include <pthread.h>

#include <algorithm>
#include <functional>

#include "check/braces.h"
#include "check/files.h"
#include "check/line_ends.h"
#include "check/program.h"
#include "check/survey.h"
#include "check/trial.h"
#include "script/source/text.h"

// Looks at the text alone, apart from what it says.

static void checkSize(const Source& source, bool loads, Findings& findings) {
    const size_t kept = kProgramCapacity - 1;
    if (source.bytes.size() <= kept) return;
    const size_t last = source.text.empty() ? 0 : source.text.size() - 1;
    findings.add(CheckId::TooBig, last,
                 "the script has " + std::to_string(source.bytes.size()) +
                     " bytes: the engine reads " + std::to_string(kept) + " and cuts the rest off",
                 loads ? Severity::Warning : Severity::Error);
}

static void checkZeroByte(const Source& source, Findings& findings) {
    const size_t zero = source.bytes.find('\0');
    const size_t last = source.text.empty() ? 0 : source.text.size() - 1;
    if (zero < source.bytes.size() && zero < kProgramCapacity - 1) {
        findings.add(CheckId::ZeroByte, last, "a zero byte after this ends the text");
    }
}

// Bare line feeds that the load gets past: in comments and strings, and in words.
static void checkLineEnds(const Source& source, Findings& findings) {
    const std::string& text = source.text;
    for (size_t i = 0; i < text.size(); i++) {
        const bool bare = text[i] == '\n' && (i == 0 || text[i - 1] != '\r');
        const bool alone = text[i] == '\r' && i + 1 < text.size() && text[i + 1] != '\n';
        if (!bare && !alone) continue;
        findings.add(CheckId::LineEnd, i,
                     bare ? "this line ends in a bare line feed; save the script with CR LF line "
                            "ends, or run zelcheck --fix"
                          : "a carriage return alone: the character after it is lost");
        return;
    }
}

// The bare line feed that the load never gets past, or null.
static const Finding* stuckLineFeed(const Source& source, const std::vector<Finding>& findings) {
    for (const Finding& finding : findings) {
        const bool error = finding.severity == Severity::Error;
        if (error && finding.id == CheckId::LineEnd && source.text[finding.position] == '\n') {
            return &finding;
        }
    }
    return nullptr;
}

// Everything but what the load has found.
static void checkLoaded(const Source& source, const Program& program, bool onDisk,
                        Findings& findings) {
    checkSize(source, program.loads, findings);
    checkZeroByte(source, findings);
    checkLineEnds(source, findings);
    const std::vector<FileUse> files = surveyProgram(program, findings);
    if (program.loads) tryProgram(program, findings);
    const bool alone = findings.keepRootAlone(bracesMatch(program.scanner));
    if (onDisk) checkFiles(source.path, alone ? std::vector<FileUse>() : files, findings);
}

// What else is wrong is found in the fixed text; its lines and columns are the same.
static CheckResult checkFixed(const Source& broken, const Finding& stuck, bool onDisk) {
    CheckResult result = {makeSource(broken.path, withCrLf(broken.bytes)), {}};
    Findings findings;
    Program program(result.source);
    loadProgram(program, findings);
    checkLoaded(result.source, program, onDisk, findings);

    // Each bare line end before it is a byte longer now.
    const size_t upToHere = countBadLineEnds(broken.text.substr(0, stuck.position + 1));
    const size_t position = stuck.position + upToHere - 1;
    const size_t count = countBadLineEnds(broken.bytes);
    findings.add(
        CheckId::LineEnd, std::min(position, result.source.text.size()),
        stuck.text + " (" + std::to_string(count) + (count == 1 ? " such line)" : " such lines)"),
        Severity::Error);
    result.findings = findings.sorted();
    return result;
}

static CheckResult checkHere(const std::string& path, const std::string& bytes, bool onDisk) {
    CheckResult result = {makeSource(path, bytes), {}};
    Findings findings;
    Program program(result.source);
    loadProgram(program, findings);
    if (const Finding* stuck = stuckLineFeed(result.source, findings.all())) {
        return checkFixed(result.source, *stuck, onDisk);
    }
    checkLoaded(result.source, program, onDisk, findings);
    result.findings = findings.sorted();
    return result;
}

// A big stack -----------------------------------------------------------------------------------

// The checker calls itself for every level of the script's nesting, as the engine does, and every
// level takes more of the stack here: 4000 of them, in a build with sanitizers, more than the usual
// 8 MiB. Memory that is not used is not taken.
static constexpr size_t kStackBytes = 256 * 1024 * 1024;

static void* callFunction(void* function) {
    (*static_cast<std::function<void()>*>(function))();
    return nullptr;
}

static void runOnBigStack(std::function<void()> function) {
    pthread_attr_t attributes;
    pthread_t thread;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kStackBytes);
    const bool started = pthread_create(&thread, &attributes, callFunction, &function) == 0;
    pthread_attr_destroy(&attributes);
    if (started) {
        pthread_join(thread, nullptr);
    } else {
        function();
    }
}

CheckResult checkScript(const std::string& path, const std::string& bytes, bool onDisk) {
    CheckResult result;
    runOnBigStack([&] { result = checkHere(path, bytes, onDisk); });
    return result;
}
