// Writing findings: for people, in the form that compilers use, and as JSON.
#pragma once

#include <string>

#include "check/findings.h"
#include "check/source.h"

enum class ReportForm { Plain, Colour, Json };

// path:line:column: error|warning: text [id], then the source line and a caret under the place.
// With Json one object on a line, without the source line.
std::string reportOf(const Source& source, const Finding& finding, ReportForm form);
