// Where the mixed sound goes. An output pulls blocks from the mixer on a thread of its own, in real time, from Start
// to Stop.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace hullrider {

class Mixer;

class Output {
public:
    virtual ~Output() = default;

    virtual uint32_t Rate() const = 0;  // Hz, for as long as the output lives
    virtual bool Start(Mixer& mixer) = 0;
    // No block is pulled after it has returned. For good; also done by destruction.
    virtual void Stop() = 0;
    // How much of what was mixed is still to be heard.
    virtual uint32_t LatencyFrames() const = 0;
    // Any thread, at any time after Start: something has changed that is to be heard soon.
    virtual void Hasten() {}
    // Whether the sum is kept within full scale, which makes it a little later still.
    virtual bool IsLimited() const { return true; }
    // For a person: what it is, and its rate.
    virtual std::string Description() const = 0;
};

// Each returns null, with a BASS_ERROR code, when it cannot be opened. `rate` is in Hz; a device goes by its own.
std::unique_ptr<Output> OpenDeviceOutput(int& error);
std::unique_ptr<Output> OpenNullOutput(uint32_t rate);
std::unique_ptr<Output> OpenWavOutput(const std::string& path, uint32_t rate, int& error);

}  // namespace hullrider
