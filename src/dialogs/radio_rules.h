// What the numbers in Radio Options mean. Pure; UI thread.
#pragma once

#include <cstdint>
#include <string>

#include "state/music_library.h"
#include "state/selection_state.h"

namespace hullrider {

// A setting with a check box: 0 or less when it is off. While it is off, the number that it had is remembered.
class OptionalNumber {
public:
    OptionalNumber(int32_t& setting, int32_t off, int32_t usual) : setting_(&setting), off_(off), number_(usual) {}

    bool IsOn() const { return *setting_ > 0; }
    void Switch(bool isOn);

    int32_t Number() const;  // the remembered one while it is off
    void SetNumber(int32_t number);

private:
    int32_t* setting_;
    int32_t off_;             // what the setting holds then
    mutable int32_t number_;  // the last one that was seen
};

// The ends of a range do not cross: one that is moved past the other takes it along.
void MoveLeast(int32_t& least, int32_t& most, int32_t to);
void MoveMost(int32_t& least, int32_t& most, int32_t to);

// Sliders that do not cross: the moved one stops at the other.
float StoppedHigh(float wanted, float low);
float StoppedLow(float wanted, float high);

// The text beside a category's weight: its share of the picks, 0 to 1, or that there is nothing of it.
std::string ShareText(Category category, double share, const MusicLibrary& library);

// The remark on a history that is deeper than the library. Empty when all is well.
std::string HistoryRemark(int32_t depth, int64_t songs);

}  // namespace hullrider
