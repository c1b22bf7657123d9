// The header test's second file compiled as C++: the same source as HeaderTestSecond.c.
#include "HeaderTestSecond.c"
