#include "check/check.h"

#include <algorithm>

#include "check/files.h"
#include "check/line_ends.h"
#include "check/program.h"
#include "check/survey.h"
#include "check/trial.h"
#include "script/text.h"

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
        findings.add(CheckId::ZeroByte, last, "a zero byte behind here ends the text");
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
                          : "a carriage return alone: the character behind it is lost");
        return;
    }
}

static bool isStuckAtLineFeed(const Source& source, const Findings& findings) {
    for (const Finding& finding : findings.sorted()) {
        const bool error = finding.severity == Severity::Error;
        if (error && finding.id == CheckId::LineEnd && source.text[finding.position] == '\n') {
            return true;
        }
    }
    return false;
}

// Finds everything about a text whose line ends the engine gets past.
static void checkText(const Source& source, bool onDisk, Findings& findings) {
    Program program(source);
    loadProgram(program, findings);
    checkSize(source, program.loads, findings);
    checkZeroByte(source, findings);
    const std::vector<FileUse> files = surveyProgram(program, findings);
    if (onDisk) checkFiles(source.path, files, findings);
    if (program.loads) tryProgram(program, findings);
}

// The load never gets past a bare line feed. What else is wrong is found in the mended text.
static CheckResult checkMended(const Source& broken, const Finding& stuck, bool onDisk) {
    CheckResult result;
    result.source = makeSource(broken.path, withCrLf(broken.bytes));
    Findings findings;
    checkText(result.source, onDisk, findings);
    const Place place = broken.placeOf(stuck.position);
    const size_t line = std::min(place.line, result.source.lineStarts.size()) - 1;
    const size_t position = result.source.lineStarts[line] + place.column - 1;
    const size_t count = countBadLineEnds(broken.bytes);
    findings.add(CheckId::LineEnd, std::min(position, result.source.text.size()),
                 stuck.text + " (" + std::to_string(count) +
                     (count == 1 ? " such line)" : " such lines)"),
                 Severity::Error);
    result.findings = findings.sorted();
    return result;
}

CheckResult checkScript(const std::string& path, const std::string& bytes, bool onDisk) {
    CheckResult result;
    result.source = makeSource(path, bytes);
    {
        Findings load;
        Program program(result.source);
        loadProgram(program, load);
        if (isStuckAtLineFeed(result.source, load)) {
            for (const Finding& finding : load.sorted()) {
                if (finding.id == CheckId::LineEnd && finding.severity == Severity::Error) {
                    return checkMended(result.source, finding, onDisk);
                }
            }
        }
    }
    Findings findings;
    checkText(result.source, onDisk, findings);
    checkLineEnds(result.source, findings);
    result.findings = findings.sorted();
    return result;
}
