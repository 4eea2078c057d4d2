// Starting and stopping the sound as a whole. UI thread.
#pragma once

#include "app/player.h"

namespace hullrider {

// Opens the sound device, or plays silently when there is none. Throws std::runtime_error when the recording that was
// asked for cannot be written.
void InitAudio(Player& player);

// Stops what plays and lets the sound device go, until something is started again. A recording stays open and records
// silence.
void StopMusic(Player& player);

// After a stop: the device and the SoundFont as they were. Without effect otherwise. Due before anything is played.
// False when the program was ended meanwhile, which an error box allows: then nothing may be played.
bool StartAudioAgain(Player& player);

// Begins anew with another song, whether it plays or was stopped.
void StartMusic(Player& player);

}  // namespace hullrider
