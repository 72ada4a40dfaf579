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
        case CheckId::TimerInterval:
        case CheckId::AssignedCondition:
        case CheckId::NeverShown:
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

static size_t keyOf(CheckId id, size_t position) {
    return position * static_cast<size_t>(CheckId::Count) + static_cast<size_t>(id);
}

void Findings::add(CheckId id, size_t position, std::string text, Severity severity) {
    const auto [known, isNew] = index_.emplace(keyOf(id, position), findings_.size());
    if (isNew) {
        findings_.push_back({id, severity, position, std::move(text)});
    } else {
        Finding& finding = findings_[known->second];
        finding.severity = std::max(finding.severity, severity);
    }
}

// True if a finding of the one id may be why the engine fails in the way of the other. What values
// lead to has its cause in them, everything else in the words of the statement.
static bool mayCause(CheckId cause, CheckId failure) {
    switch (failure) {
        case CheckId::EndlessLoop:
        case CheckId::DivisionByZero:
        case CheckId::TooManyCalls:
        case CheckId::NestedTooDeeply:
        case CheckId::TooManyArguments:
            return cause == failure;
        case CheckId::TooManyLocals:
            return cause == CheckId::DeclarationInLoop;
        default:
            return !isHarmless(cause);
    }
}

// Of several findings one of the same id explains most, then the first one.
void Findings::confirm(CheckId id, size_t position, size_t from, size_t to,
                       const std::string& text) {
    Finding* cause = nullptr;
    for (Finding& known : findings_) {
        const bool inside = known.position >= from && known.position <= to;
        if (!inside || !mayCause(known.id, id)) continue;
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

bool Findings::anyOddToken(size_t from, size_t to) const {
    return std::any_of(findings_.begin(), findings_.end(), [&](const Finding& known) {
        const bool odd = known.id == CheckId::BadCharacter || known.id == CheckId::OpenString ||
                         known.id == CheckId::NoSuchOperator || known.id == CheckId::GluedCharacter;
        return odd && known.position >= from && known.position < to;
    });
}

bool Findings::has(CheckId id, size_t position) const {
    return index_.count(keyOf(id, position)) > 0;
}

static bool isBrace(const Finding& finding) {
    return finding.id == CheckId::OpenBrace || finding.id == CheckId::ExtraBrace;
}

// The mistake that all findings are likely to come from, or null. The braces of a text that is cut
// off do not match either; nor do those that a text or a word has swallowed.
static const Finding* rootOf(const std::vector<Finding>& findings, bool bracesMatch) {
    const Finding* root = nullptr;
    for (const Finding& finding : findings) {
        if (finding.id == CheckId::OpenComment) return &finding;
        if (finding.id == CheckId::TooBig || finding.id == CheckId::ZeroByte) return nullptr;
        if (root == nullptr && !bracesMatch && isBrace(finding)) root = &finding;
    }
    if (root == nullptr) return nullptr;
    for (const CheckId cause : {CheckId::OpenString, CheckId::GluedCharacter}) {
        for (const Finding& finding : findings) {
            if (finding.id == cause) return &finding;
        }
    }
    return root;
}

bool Findings::keepRootAlone(bool bracesMatch) {
    const Finding* const root = rootOf(findings_, bracesMatch);
    if (root == nullptr) return false;
    Finding kept = *root;
    for (const Finding& finding : findings_)
        kept.severity = std::max(kept.severity, finding.severity);
    findings_.clear();
    index_.clear();
    add(kept.id, kept.position, kept.text, kept.severity);
    return true;
}

static std::vector<Finding> inTextOrder(std::vector<Finding> findings) {
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding& a, const Finding& b) { return a.position < b.position; });
    return findings;
}

// A script with one mistake in a thousand places is told so once, not a thousand times.
std::vector<Finding> Findings::sorted() const {
    constexpr size_t kShownOfEach = 20;
    std::vector<Finding> shown;
    size_t counts[static_cast<size_t>(CheckId::Count)] = {};
    for (const Finding& finding : inTextOrder(findings_)) {
        const bool certain = finding.severity == Severity::Error;
        size_t& count = counts[static_cast<size_t>(finding.id)];
        if (!certain && ++count > kShownOfEach) continue;
        shown.push_back(finding);
        if (certain) continue;
        std::string& text = shown.back().text;
        const bool mayStop = infoOf(finding.id).confirmed == Severity::Error;
        if (mayStop) text += " (matters when the engine gets here)";
        if (count == kShownOfEach) text += " (any more of these are not shown)";
    }
    return shown;
}
