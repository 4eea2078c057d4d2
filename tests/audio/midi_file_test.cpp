#include "audio/midi_file.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/audio/midi_bytes.h"

namespace hullrider {

TEST(MidiFile, TimesFollowTheTempoMapOfAnyTrack) {
    // 480 ticks a quarter: one second for two quarters at the default tempo, then half speed, then double speed.
    const std::string tempos = Tempo(960, 1'000'000) + Tempo(960, 250'000) + EndOfTrack();
    const std::string notes = At(480, {0x90, 60, 100}) + At(480, {60, 0}) + At(480, {0x91, 61, 100}) +
                              At(480, {0x91, 61, 0}) + At(960, {0xC2, 5}) + EndOfTrack(960);
    const auto song = ReadMidiFile(MidiFile(1, 480, {tempos, notes}));
    ASSERT_TRUE(song);
    const double seconds[] = {0.5, 1.0, 2.0, 3.0, 3.5};
    const int statuses[] = {0x90, 0x90, 0x91, 0x91, 0xC2};
    ASSERT_EQ(song->events.size(), 5u);
    for (size_t i = 0; i < 5; i++) {
        EXPECT_NEAR(song->events[i].seconds, seconds[i], 1e-9) << i;
        EXPECT_EQ(song->events[i].status, statuses[i]) << i;
    }
    EXPECT_NEAR(song->seconds, 4.0, 1e-9);
}

TEST(MidiFile, LengthIsThatOfTheTracksInEveryFormatAndDivision) {
    const std::string second = At(0, {0x90, 60, 1}) + EndOfTrack(960);
    struct Case {
        const char* name;
        std::string file;
        double seconds;
    };
    const Case cases[] = {
        {"format 0", MidiFile(0, 480, {second}), 1.0},
        {"format 1, together", MidiFile(1, 480, {second, second}), 1.0},
        {"format 2, one after the other", MidiFile(2, 480, {second, second, second}), 3.0},
        {"25 frames a second, 40 ticks a frame", MidiFile(0, 0xE728, {second}), 0.96},
        {"drop frame", MidiFile(0, 0xE364, {second}), 960.0 / 2997.0},
        {"tempo 0 is the default", MidiFile(0, 480, {Tempo(0, 0) + second}), 1.0},
        {"in a RIFF", "RIFF" + Bytes({0, 1, 0, 0}) + "RMIDdata" + Bytes({0, 1, 0, 0}) + MidiFile(0, 480, {second}),
         1.0},
        {"unknown chunk", MidiFile(0, 480, {second}) + "XFIH" + BigEndian(3, 4) + "abc", 1.0},
        {"longer header",
         "MThd" + BigEndian(8, 4) + Bytes({0, 0, 0, 1, 1, 0xE0, 9, 9}) + MidiFile(0, 480, {second}).substr(14), 1.0},
        {"no end of track", MidiFile(0, 480, {At(960, {0x90, 60, 1})}), 1.0},
        {"endless wait", MidiFile(0, 1, {At(0xFFFFFFF, {0x90, 60, 1}) + EndOfTrack()}), 86400.0},
        {"a wait after the last note",
         MidiFile(0, 500,
                  {At(0, {0x90, 60, 1}) + At(0, {0x99, 36, 1}) + At(500, {0x90, 60, 0}) + EndOfTrack(2'000'000)}),
         10.5},
        {"a wait while a note is held", MidiFile(0, 500, {At(0, {0x90, 60, 1}) + EndOfTrack(60'000)}), 60.0},
        {"a wait while a pedal holds a note",
         MidiFile(0, 500, {At(0, {0x90, 60, 1}) + At(0, {0xB0, 64, 127}) + At(1, {0x80, 60, 0}) + EndOfTrack(60'000)}),
         60.001},
        {"a wait after all notes were cut",
         MidiFile(0, 500, {At(0, {0x90, 60, 1}) + At(500, {0xB0, 123, 0}) + EndOfTrack(60'000)}), 10.5},
        {"a wait after the controllers of a held pedal were reset",
         MidiFile(0, 500,
                  {At(0, {0x90, 60, 1}) + At(0, {0xB0, 64, 127}) + At(250, {0x80, 60, 0}) + At(250, {0xB0, 121, 0}) +
                   EndOfTrack(60'000)}),
         10.5},
        {"a wait after a system reset",
         MidiFile(0, 500,
                  {At(0, {0xB0, 64, 127}) + At(0, {0x91, 60, 1}) + At(500, {0xF0, 5, 0x7E, 0x7F, 9, 1, 0xF7}) +
                   EndOfTrack(60'000)}),
         10.5},
    };
    for (const Case& test : cases) {
        const auto song = ReadMidiFile(test.file);
        ASSERT_TRUE(song) << test.name;
        EXPECT_NEAR(song->seconds, test.seconds, 1e-6) << test.name;
        EXPECT_TRUE(song->seconds == 86400.0 || !song->events.empty()) << test.name;
    }
}

TEST(MidiFile, KeepsWhatComesBeforeTheFirstNonsense) {
    const std::string good = At(0, {0x90, 60, 1});
    const std::string nonsense[] = {
        Bytes({0}),
        Bytes({0xFF, 0xFF, 0xFF, 0xFF, 0xFF}),           // a delta of more than four bytes
        At(0, {0x90, 0x90, 1}),                          // a data byte that is none
        At(0, {0x90, 60}),                               // broken off
        At(0, {0xF4}),                                   // undefined
        At(0, {0xFF, 0x51, 0xFF, 0xFF, 0xFF, 0x7F}),     // a meta event of 256 MB
        At(0, {0xF0, 0xFF, 0xFF, 0xFF, 0x7F, 1, 2, 3}),  // a system exclusive message of 256 MB
        At(0, {0xFF}),
    };
    for (const std::string& bytes : nonsense) {
        const auto song = ReadMidiFile(MidiFile(0, 96, {good + bytes}));
        ASSERT_TRUE(song);
        EXPECT_EQ(song->events.size(), 1u) << testing::PrintToString(bytes);
    }
    const auto song = ReadMidiFile(MidiFile(0, 96, {Bytes({0, 60, 1})}));  // a running status of nothing
    EXPECT_TRUE(song && song->events.empty());
}

TEST(MidiFile, RefusesWhatIsNoMidiFile) {
    const std::string track = At(0, {0x90, 60, 1});
    for (const char* file : {"", "M", "MThd", "RIFF", "RIFF1234RMI", "RIFF1234RMID"}) EXPECT_FALSE(ReadMidiFile(file));
    const std::string files[] = {"MThd" + BigEndian(6, 4), "MThd" + BigEndian(0xFFFFFFFF, 4) + std::string(100, 'x'),
                                 MidiFile(0, 0, {track}), MidiFile(3, 96, {track}), MidiFile(0, 96, {})};
    for (const std::string& file : files) EXPECT_FALSE(ReadMidiFile(file)) << testing::PrintToString(file);
}

TEST(MidiFile, SystemExclusiveMessagesAreKeptWithoutTheirFrame) {
    const auto song = ReadMidiFile(MidiFile(0, 96, {At(0, {0xF0, 5, 0x7E, 0x7F, 9, 1, 0xF7}) + At(0, {0xF0, 0})}));
    ASSERT_TRUE(song);
    ASSERT_EQ(song->events.size(), 1u);
    EXPECT_EQ(song->events[0].status, 0xF0);
    ASSERT_EQ(song->sysex.size(), 1u);
    EXPECT_EQ(song->sysex[0], (std::vector<uint8_t>{0x7E, 0x7F, 9, 1}));
}

TEST(MidiFile, AFloodOfSystemExclusiveMessagesIsCut) {
    const std::string reset = At(0, {0xF0, 5, 0x7E, 0x7F, 9, 1, 0xF7});
    std::string flood;
    for (int i = 0; i < 50'000; i++) flood += reset;
    const auto song = ReadMidiFile(MidiFile(1, 96, {flood, flood + At(0, {0x90, 60, 1}), reset}));
    ASSERT_TRUE(song);
    EXPECT_GE(song->events.size(), 1000u);
    EXPECT_LE(song->events.size(), 10'000u);
    EXPECT_EQ(song->events.back().status, 0x90);
}

TEST(MidiFile, MoreEventsThanAnySongHasAreRefused) {
    const auto events = [](size_t count) {
        std::string track = At(0, {0x90, 60, 1});
        for (size_t i = 1; i < count; i++) track.append("\0\x3C\1", 3);
        return MidiFile(0, 96, {track});
    };
    EXPECT_TRUE(ReadMidiFile(events(200'000)));
    EXPECT_FALSE(ReadMidiFile(events(1'100'000)));
}

TEST(MidiFile, SurvivesEveryCutAndManyFlips) {
    const std::string whole = MidiFile(1, 96,
                                       {Tempo(0, 300000) + At(5, {0xF0, 2, 1, 0xF7}) + EndOfTrack(),
                                        At(0, {0xC0, 3}) + At(200, {0x90, 60, 1}) + At(9, {60, 0}) + EndOfTrack()});
    for (size_t length = 0; length <= whole.size(); length++) ReadMidiFile(whole.substr(0, length));
    std::minstd_rand random(1);
    for (int i = 0; i < 20000; i++) {
        std::string flipped = whole;
        for (int flips = 0; flips < 4; flips++) flipped[random() % flipped.size()] = static_cast<char>(random());
        const auto song = ReadMidiFile(flipped);
        if (!song) continue;
        double last = 0.0;
        for (const MidiEvent& event : song->events) {
            ASSERT_GE(event.seconds, last);
            ASSERT_TRUE(event.status != 0xF0 || event.sysex < song->sysex.size());
            last = event.seconds;
        }
    }
}

}  // namespace hullrider
