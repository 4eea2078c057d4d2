// A destination of the mixed sound. An output pulls blocks from the mixer on a thread of its own, in real time, from
// Start to Stop.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace hullrider {

class Mixer;

class Output {
public:
    virtual ~Output() = default;

    virtual uint32_t Rate() const = 0;  // Hz, constant
    virtual bool Start(Mixer& mixer) = 0;
    // No block is pulled after it has returned. Final; the destructor does it too.
    virtual void Stop() = 0;
    // How much of the mixed sound has not been heard yet.
    virtual uint32_t LatencyFrames() const = 0;
    // Any thread, any time after Start: something has changed that should be heard soon.
    virtual void Hasten() {}
    // Whether the sum is limited to full scale, which delays it a little more.
    virtual bool IsLimited() const { return true; }
    // For display: what it is, and its rate.
    virtual std::string Description() const = 0;
};

// Each returns null, with a BASS_ERROR code, when it cannot be opened. `rate` is in Hz; a device uses its own.
std::unique_ptr<Output> OpenDeviceOutput(int& error);
std::unique_ptr<Output> OpenNullOutput(uint32_t rate);
std::unique_ptr<Output> OpenWavOutput(const std::string& path, uint32_t rate, int& error);

}  // namespace hullrider
