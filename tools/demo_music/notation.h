// Reads melodies written in Music Macro Language, the text notation of home computers' sound chips.
#pragma once

#include <string_view>

#include "demo_music/phrase.h"

namespace hullrider::demo {

// c d e f g a b  a note, '+' sharp, '-' flat, then a length: 4 a quarter, 8 an eighth, dots allowed ("g4." "f8")
// r              a rest, with a length like a note
// ^              makes the note (or rest) before it longer by a length
// o5  >  <       octave 5; one octave up; one down
// l8             the length of notes that name none
// v7             loudness 1..9 of the notes that follow
// |              a bar line: the phrase is checked to be a whole number of bars long here
//
// Throws std::invalid_argument, naming the place, for anything else and for a bar of a wrong length: both are mistakes
// of the composer, found when the program first runs.
Phrase ReadMelody(std::string_view text, double beatsPerBar = 4);

}  // namespace hullrider::demo
