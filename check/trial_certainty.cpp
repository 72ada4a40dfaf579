#include <algorithm>
#include <functional>

#include "check/trial_reader.h"

// Certainty -------------------------------------------------------------------------------------

void Trial::forgetGlobals() {
    std::fill(globals_.begin(), globals_.end(), Value());
    returnValue_ = {};
}

// A word in a part that may or may not be run.
void Trial::forget(const Lexeme& token) {
    if (token.kind == TokenKind::Keyword && token.keyword != KeywordCode::If &&
        token.keyword != KeywordCode::Else) {
        throw Uncertain();
    }
    if (!token.isIdentifier()) return;
    if (findBuiltinSignature(token.text) != nullptr) {
        noteTaken(token.text);
    } else if (program_.findFunction(token.text) != nullptr) {
        if (program_.usesEnd) throw Uncertain();
        forgetGlobals();
        if (inMain_) callbacks_.clear();
    }
    Value* variable = findVariable(token.text);
    if (variable != nullptr) *variable = {};
}

// A statement that failed, up to the position: what it would have assigned.
void Trial::forgetFrom(size_t start) {
    for (Lexeme lexeme = scanner_.readReal(start); lexeme.start < position_ && !lexeme.isFinished();
         lexeme = scanner_.readReal(lexeme.next)) {
        if (lexeme.kind != TokenKind::Keyword) forget(lexeme);
    }
}

// Skips a block whose statements can only change variables, or fail.
void Trial::skipHarmlessBlock() {
    read();
    if (!token_.is('{')) throw Uncertain();
    for (int depth = 1; depth > 0;) {
        read();
        if (token_.isFinished()) throw Uncertain();
        forget(token_);
        if (token_.is('{')) depth++;
        if (token_.is('}')) depth--;
    }
}

// Goes on after a body that may or may not be run, and after its else. `from` is where the
// statement begins: what a condition assigns may be assigned again.
void Trial::skipUnknown(size_t from) {
    const size_t body = position_;
    for (Lexeme token = scanner_.read(scanner_.read(from).next); token.start < body;
         token = scanner_.readReal(token.next)) {
        forget(token);
    }
    skipHarmlessBlock();
    const Lexeme next = scanner_.read(position_);
    if (next.keyword == KeywordCode::Else) {
        read();
        skipHarmlessBlock();
    }
    if (findings_.anyTrap(from, position_)) throw Uncertain();
}

static void mix(size_t& hash, size_t value) {
    hash ^= value + 0x9E3779B97F4A7C15U + (hash << 6) + (hash >> 2);
}

size_t Trial::stateHash() const {
    size_t hash = frames_.size();
    const auto mixValue = [&](Value value) {
        mix(hash, value.known ? 1 : 0);
        mix(hash, static_cast<size_t>(value.number));
    };
    for (const Variable& local : locals_) {
        mix(hash, std::hash<std::string_view>()(local.name));
        mixValue(local.value);
    }
    for (Value global : globals_)
        mixValue(global);
    for (size_t position : returns_)
        mix(hash, position);
    mixValue(returnValue_);
    return hash;
}

// The trial has run in a loop for as long as it may. If its test is a constant, and no word of the
// script can end the game, so does the engine.
void Trial::confirmEndless() {
    if (endless_ && !program_.usesEnd) {
        findings_.add(CheckId::EndlessLoop, *endless_, "", Severity::Error);
    }
}

// Called at each pass of a loop whose test is known. All that has happened since the last pass was
// known too: where nothing has changed, nothing ever will.
void Trial::watchLoop(size_t start) {
    if (findings_.has(CheckId::EndlessLoop, start)) endless_ = start;
    if (!wholeStatement_) return;
    const size_t hash = stateHash();
    const auto [state, isNew] = loopStates_.emplace(start, hash);
    if (!isNew && state->second == hash) {
        fail(CheckId::EndlessLoop, start, "nothing ends this loop: a pass changes nothing");
    }
    state->second = hash;
}
