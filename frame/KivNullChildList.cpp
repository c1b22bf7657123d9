// The shared child-before-creation instance (IKivChildList.h). Portable.
#include "IKivChildList.h"

KivNullChildList& KivNullChildList::instance() {
    static KivNullChildList none;
    return none;
}
