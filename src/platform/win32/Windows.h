// The system's own header, without its macros that take names of ports away.
#pragma once

#include <windows.h>

#undef SendMessage
#undef Yield
