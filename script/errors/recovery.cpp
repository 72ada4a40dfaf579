#include "script/errors/recovery.h"

#include <csetjmp>
#include <cstdio>

#include "script/errors/endless.h"
#include "script/errors/halt.h"
#include "script/errors/nesting.h"

int32_t gLocalTop = 0;
int32_t gCallDepth = 0;

// The innermost recovery point of this thread, null outside the interpreter. The jmp_buf lives in
// the stack frame of runInside.
static thread_local std::jmp_buf* gErrorJump = nullptr;

static void ignore(bool) {}
void (*gOnScript)(bool enters) = ignore;

static bool runInside(void (*operation)(const void*), const void* argument) {
    std::jmp_buf here;
    std::jmp_buf* const outer = gErrorJump;
    const int32_t localTop = gLocalTop;
    const int32_t callDepth = gCallDepth;
    const int32_t nestingDepth = gNestingDepth;

    if (setjmp(here) == 0) {
        gErrorJump = &here;
        operation(argument);
        gErrorJump = outer;
        return true;
    }
    std::fputs("Error buffer long jump", stdout);
    gLocalTop = localTop;
    gCallDepth = callDepth;
    gNestingDepth = nestingDepth;
    endCall();
    gErrorJump = outer;
    return false;
}

bool runGuarded(void (*operation)(const void*), const void* argument) {
    const bool isOutermost = gErrorJump == nullptr;
    if (isOutermost) gOnScript(true);
    const bool succeeded = runInside(operation, argument);
    if (isOutermost) gOnScript(false);
    return succeeded;
}

void leaveToRecoveryPoint() {
    if (gErrorJump == nullptr) abortProcess();
    std::longjmp(*gErrorJump, 1);
}
