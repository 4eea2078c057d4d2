#define MINIAUDIO_IMPLEMENTATION
#include "audio/miniaudio_setup.h"
