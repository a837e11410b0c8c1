#include "zoTestHeaders.h"

// No code: the headers alone are wanted.
