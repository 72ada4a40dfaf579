// Any bytes through the checker: no crash, no hang, and what comes out can be written.
#include <cstddef>
#include <cstdint>
#include <string>

#include "check/check.h"
#include "check/line_ends.h"
#include "check/report.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const CheckResult result = checkScript("script.txt", bytes, false);
    for (const Finding& finding : result.findings) {
        reportOf(result.source, finding, ReportForm::Colour);
        reportOf(result.source, finding, ReportForm::Json);
    }
    if (countBadLineEnds(withCrLf(bytes)) != 0) __builtin_trap();
    return 0;
}
