#include "check/room.h"

#include <algorithm>
#include <vector>

#include "check/builtins.h"
#include "check/line_ends.h"
#include "check/program.h"
#include "script/run/functions.h"
#include "script/run/variables.h"
#include "script/source/text.h"

// For each function, by its index, the functions that its text names.
using CallGraph = std::vector<std::vector<size_t>>;

static CallGraph callGraph(const Program& program) {
    CallGraph graph(program.functions.size());
    for (size_t i = 0; i < graph.size(); i++) {
        const bool isLast = i + 1 == graph.size();
        const size_t end = isLast ? program.scanner.size() : program.functions[i + 1].start;
        size_t position = program.functions[i].location;
        while (position < end) {
            const Lexeme token = program.scanner.readReal(position);
            if (token.start >= end) break;
            position = std::max(token.next, position + 1);  // a faulty token may have no length
            if (!token.isIdentifier() || findBuiltinSignature(token.text) != nullptr) continue;
            const auto called = program.functionIndex.find(token.text);
            if (called != program.functionIndex.end()) graph[i].push_back(called->second);
        }
    }
    return graph;
}

// The longest chain of calls, or 0 if there is a circle: as many rounds as there are functions
// make the depths of all chains final.
static size_t deepestCalls(const CallGraph& graph) {
    std::vector<size_t> depths(graph.size(), 1);
    for (size_t round = 0; round <= graph.size(); round++) {
        bool changed = false;
        for (size_t i = 0; i < graph.size(); i++) {
            for (const size_t called : graph[i]) {
                if (depths[i] > depths[called]) continue;
                depths[i] = depths[called] + 1;
                changed = true;
            }
        }
        if (!changed) return depths.empty() ? 0 : *std::max_element(depths.begin(), depths.end());
    }
    return 0;
}

static std::string part(size_t used, size_t limit, const char* what) {
    return std::to_string(used) + " of " + std::to_string(limit) + " " + what;
}

std::string roomLine(const std::string& bytes) {
    const Source source = makeSource("", withCrLf(bytes));
    Findings unread;
    Program program(source);
    loadProgram(program, unread);
    const size_t depth = deepestCalls(callGraph(program));
    return "room: " + part(bytes.size(), kProgramCapacity - 1, "bytes") + ", " +
           part(program.functions.size(), kMaxFunctions, "functions") + ", " +
           part(program.globals.size(), kMaxGlobals, "globals") +
           (depth > 0 ? ", calls " + std::to_string(depth) + " deep" : "");
}
