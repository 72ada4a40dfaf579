#include "check/ids.h"

static const CheckIdInfo kInfos[] = {
#define ZEL_ROW(name, id, confirmed, meaning) {id, Severity::confirmed, meaning},
    ZEL_CHECK_IDS(ZEL_ROW)
#undef ZEL_ROW
};

const CheckIdInfo& infoOf(CheckId id) {
    return kInfos[static_cast<size_t>(id)];
}
