// miniaudio reduced to sound devices. Every user must include it through this header, because the switches change its
// structures.
#pragma once

// The null backend would look like a device when there is none.
#define MA_ENABLE_ONLY_SPECIFIC_BACKENDS
#define MA_ENABLE_WASAPI
#define MA_ENABLE_DSOUND
#define MA_ENABLE_PULSEAUDIO
#define MA_ENABLE_ALSA
#define MA_NO_DECODING
#define MA_NO_ENCODING
#define MA_NO_GENERATION
#define MA_NO_RESOURCE_MANAGER
#define MA_NO_NODE_GRAPH
#define MA_NO_ENGINE

#include <miniaudio.h>
