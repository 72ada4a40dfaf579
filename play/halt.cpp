// In place of script/errors/halt.cpp: a script that ends its process ends the level only, and the
// play goes on with what can be said of the level then.
#include "script/errors/halt.h"

#include "play/level.h"
#include "play/watch.h"

void endProcess(int status) {
    leaveLevel(status == 0 ? LevelEnd::Ended : LevelEnd::Failed);
}

void abortProcess() {
    leaveLevel(LevelEnd::Aborted);
}

void raiseDivisionFault() {
    leaveLevel(LevelEnd::Divided);
}

void waitForEver(const char* reason, const Place* position) {
    gStuckReason = scriptPlace(position) + ": " + reason;
    leaveLevel(LevelEnd::Stuck);
}
