#include "check/findings.h"

#include <algorithm>

// Findings that are about taste and order, not about what the engine does at the place.
static bool isHarmless(CheckId id) {
    switch (id) {
        case CheckId::UnusedFunction:
        case CheckId::UnusedVariable:
        case CheckId::HiddenName:
        case CheckId::DuplicateName:
        case CheckId::MissingFile:
        case CheckId::FileCase:
        case CheckId::KeyCode:
        case CheckId::TextRewritten:
        case CheckId::CallbackUnknown:
        case CheckId::CallbackCase:
        case CheckId::CallbackParameters:
        case CheckId::NoReturnValue:
        case CheckId::OddNumber:
        case CheckId::ArgumentCount:
            return true;
        default:
            return false;
    }
}

void Findings::add(CheckId id, size_t position, std::string text, Severity severity) {
    for (Finding& known : findings_) {
        if (known.id == id && known.position == position) {
            known.severity = std::max(known.severity, severity);
            return;
        }
    }
    findings_.push_back({id, severity, position, std::move(text)});
}

// Of several findings one of the same id explains most, then the one that stands first.
void Findings::confirm(CheckId id, size_t statement, size_t position, const std::string& text) {
    Finding* cause = nullptr;
    for (Finding& known : findings_) {
        const bool inside = known.position >= statement && known.position <= position;
        if (!inside || isHarmless(known.id)) continue;
        const bool sameId = known.id == id;
        const bool causeSameId = cause != nullptr && cause->id == id;
        const bool earlier = cause == nullptr || known.position < cause->position;
        if ((sameId && !causeSameId) || (earlier && sameId == causeSameId)) cause = &known;
    }
    if (cause != nullptr) {
        cause->severity = Severity::Error;
    } else {
        add(id, position, text, Severity::Error);
    }
}

bool Findings::anyTrap(size_t from, size_t to) const {
    return std::any_of(findings_.begin(), findings_.end(), [&](const Finding& known) {
        return known.position >= from && known.position < to && !isHarmless(known.id);
    });
}

bool Findings::anyAt(size_t position) const {
    return std::any_of(findings_.begin(), findings_.end(),
                       [&](const Finding& known) { return known.position == position; });
}

std::vector<Finding> Findings::sorted() const {
    std::vector<Finding> result = findings_;
    std::stable_sort(result.begin(), result.end(), [](const Finding& a, const Finding& b) {
        return a.position < b.position;
    });
    for (Finding& finding : result) {
        const bool certain = finding.severity == Severity::Error;
        if (!certain && infoOf(finding.id).confirmed == Severity::Error) {
            finding.text += " (matters when the engine gets here)";
        }
    }
    return result;
}
