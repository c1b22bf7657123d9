// The header test compiled as C++: the same source as HeaderTest.c.
#include "HeaderTest.c"
