#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "tests/audio/font_bytes.h"
#include "tests/audio/midi_bytes.h"
#include "tests/sound/sound.h"

namespace hullrider {

class FontThreads : public SoundTest {};

TEST_F(FontThreads, FontsAreFreedAndReplacedFromSeveralThreads) {
    const std::string song = SaveMidi(At(0, {0x90, 69, 100}) + At(60'000, {0x80, 69, 0}));
    const std::string paths[] = {folder_.Write("a.sf2", FontBytes({.period = 100})),
                                 folder_.Write("b.sf2", FontBytes({.period = 50}))};
    const HSOUNDFONT first = BASS_MIDI_FontInit(paths[0].c_str(), 0);
    ASSERT_TRUE(UseFont(0, first));
    const HSTREAM streams[] = {Play(song), Play(song)};
    BASS_MIDI_FontFree(first);
    std::atomic<int> busy{3};
    std::vector<std::thread> users;
    for (int user = 0; user < 3; user++) {
        users.emplace_back([&, user] {
            for (int round = 0; round < 6; round++) {
                const HSOUNDFONT font = BASS_MIDI_FontInit(paths[(user + round) % 2].c_str(), 0);
                UseFont(streams[round % 2], font);
                if (round == 3) SeekToFrame(streams[round % 2], kRate);
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
                BASS_MIDI_FontFree(font);
            }
            busy--;
        });
    }
    while (busy > 0) Render(kRate / 10);
    for (std::thread& user : users) user.join();
    const HSOUNDFONT last = BASS_MIDI_FontInit(paths[0].c_str(), 0);
    for (const HSTREAM stream : streams) EXPECT_TRUE(UseFont(stream, last));
    Render(kRate / 2);
    const Samples heard = Left(Render(kRate / 2));
    EXPECT_GT(AmplitudeAt(heard, kRate, 441.0), 0.01);
    EXPECT_LT(AmplitudeAt(heard, kRate, 882.0), 0.001);
}

}  // namespace hullrider
