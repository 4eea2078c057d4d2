// Starting and stopping the sound as a whole. UI thread.
#pragma once

#include "app/player.h"

namespace hullrider {

// Opens the sound device; without one, plays silently. Throws std::runtime_error when the requested recording cannot be
// written.
void InitAudio(Player& player);

// Stops playback and closes the sound device. A recording stays open and records silence.
void StopMusic(Player& player);

// Undoes StopMusic: reopens the device and reloads the SoundFont. Does nothing when not stopped. Call it before playing
// anything. False when nothing may be played: the device is still being opened, or the program was ended during an
// error box.
bool StartAudioAgain(Player& player);

// Stops the current song, if any, and plays another one.
void StartMusic(Player& player);

}  // namespace hullrider
