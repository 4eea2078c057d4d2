// Every call with every kind of handle that is not for it, and without a library.
#include <gtest/gtest.h>

#include <span>
#include <vector>

#include "audio/bass.h"
#include "audio/manual_output.h"
#include "tests/audio/module_bytes.h"
#include "tests/sound/sound.h"

namespace hullrider {

namespace {

struct Call {
    const char* name;
    bool (*fails)(uint32_t handle);  // whether its result is that of a failure
};

bool SetFont(uint32_t handle) {
    const BASS_MIDI_FONT font{handle, -1, 0};
    return BASS_MIDI_StreamSetFonts(0, &font, 1);
}

void LeaveAsItIs(HDSP, uint32_t, void*, uint32_t, void*) {}

const Call kChannelCalls[] = {
    {"Play", [](uint32_t h) { return !BASS_ChannelPlay(h, false); }},
    {"Play again", [](uint32_t h) { return !BASS_ChannelPlay(h, true); }},
    {"Pause", [](uint32_t h) { return !BASS_ChannelPause(h); }},
    {"Stop", [](uint32_t h) { return !BASS_ChannelStop(h); }},
    {"IsActive", [](uint32_t h) { return BASS_ChannelIsActive(h) == BASS_ACTIVE_STOPPED; }},
    {"GetInfo",
     [](uint32_t h) {
         BASS_CHANNELINFO info;
         return !BASS_ChannelGetInfo(h, &info);
     }},
    {"GetLength", [](uint32_t h) { return BASS_ChannelGetLength(h, BASS_POS_BYTE) == BASS_QWORD_ERROR; }},
    {"GetPosition", [](uint32_t h) { return BASS_ChannelGetPosition(h, BASS_POS_BYTE) == BASS_QWORD_ERROR; }},
    {"SetPosition", [](uint32_t h) { return !BASS_ChannelSetPosition(h, 0, BASS_POS_BYTE); }},
    {"Bytes2Seconds", [](uint32_t h) { return BASS_ChannelBytes2Seconds(h, 8) < 0.0; }},
    {"Seconds2Bytes", [](uint32_t h) { return BASS_ChannelSeconds2Bytes(h, 1.0) == BASS_QWORD_ERROR; }},
    {"SetAttribute", [](uint32_t h) { return !BASS_ChannelSetAttribute(h, BASS_ATTRIB_VOL, 0.5f); }},
    {"GetAttribute",
     [](uint32_t h) {
         float value = 7.0f;
         return !BASS_ChannelGetAttribute(h, BASS_ATTRIB_VOL, &value) && value == 7.0f;
     }},
    {"SlideAttribute", [](uint32_t h) { return !BASS_ChannelSlideAttribute(h, BASS_ATTRIB_VOL, 0.5f, 10); }},
    {"IsSliding", [](uint32_t h) { return !BASS_ChannelIsSliding(h, BASS_ATTRIB_VOL); }},
    {"GetLevel", [](uint32_t h) { return BASS_ChannelGetLevel(h) == BASS_LEVEL_ERROR; }},
    {"SetFX", [](uint32_t h) { return BASS_ChannelSetFX(h, BASS_FX_BFX_PEAKEQ, 0) == 0; }},
    {"SetDSP", [](uint32_t h) { return BASS_ChannelSetDSP(h, LeaveAsItIs, nullptr, 0) == 0; }},
    {"TempoCreate", [](uint32_t h) { return BASS_FX_TempoCreate(h, 0) == 0; }},
    {"StreamFree", [](uint32_t h) { return !BASS_StreamFree(h); }},
    {"MusicFree", [](uint32_t h) { return !BASS_MusicFree(h); }},
};

const Call kFontCalls[] = {{"FontFree", [](uint32_t h) { return !BASS_MIDI_FontFree(h); }},
                           {"StreamSetFonts", [](uint32_t h) { return !SetFont(h); }}};

const Call kPluginCalls[] = {{"PluginFree", [](uint32_t h) { return !BASS_PluginFree(h); }}};

const Call kCallsThatCreate[] = {
    {"StreamCreateFile", [](uint32_t) { return BASS_StreamCreateFile(false, "x.mp3", 0, 0, 0) == 0; }},
    {"MusicLoad", [](uint32_t) { return BASS_MusicLoad(false, "x.mod", 0, 0, 0, 0) == 0; }},
    {"PluginLoad", [](uint32_t) { return BASS_PluginLoad("bassmidi.dll", 0) == 0; }},
    {"FontInit", [](uint32_t) { return BASS_MIDI_FontInit("x.sf2", 0) == 0; }},
    {"Free", [](uint32_t) { return !BASS_Free(); }},
};

void ExpectError(std::span<const Call> calls, const std::vector<uint32_t>& handles, int error) {
    for (const Call& call : calls) {
        for (const uint32_t handle : handles) {
            EXPECT_TRUE(call.fails(handle)) << call.name << " " << handle;
            EXPECT_EQ(BASS_ErrorGetCode(), error) << call.name << " " << handle;
        }
    }
}

void ExpectNoLibrary(const std::vector<uint32_t>& handles) {
    ExpectError(kChannelCalls, handles, BASS_ERROR_INIT);
    ExpectError(kFontCalls, handles, BASS_ERROR_INIT);
    ExpectError(kPluginCalls, handles, BASS_ERROR_INIT);
    ExpectError(kCallsThatCreate, handles, BASS_ERROR_INIT);
}

}  // namespace

TEST(Handles, EveryCallRefusesThoseThatAreNotForIt) {
    ExpectNoLibrary({0, 1, ~0u});

    ASSERT_TRUE(InitManualOutput(44100));
    const TemporaryFolder folder;
    const std::string wav = folder.Write("a.wav", WavBytes(Noise(44100, 1000)));
    const std::string mod = folder.Write("a.mod", ModuleBytes());
    const auto openStream = [&] { return BASS_StreamCreateFile(false, wav.c_str(), 0, 0, 0); };
    const auto openMusic = [&] { return BASS_MusicLoad(false, mod.c_str(), 0, 0, 0, 0); };
    const auto openFont = [] { return BASS_MIDI_FontInit(HULLRIDER_TEST_SOUNDFONT, 0); };
    const auto openPlugin = [] { return BASS_PluginLoad("bassmidi.dll", 0); };
    const uint32_t stream = openStream(), music = openMusic(), font = openFont(), plugin = openPlugin();
    const uint32_t goneStream = openStream(), goneMusic = openMusic(), goneFont = openFont(), gonePlugin = openPlugin();
    ASSERT_TRUE(stream && music && font && plugin && goneStream && goneMusic && goneFont && gonePlugin);
    ASSERT_TRUE(BASS_StreamFree(goneStream) && BASS_MusicFree(goneMusic));
    ASSERT_TRUE(BASS_MIDI_FontFree(goneFont) && BASS_PluginFree(gonePlugin));

    ExpectError(kChannelCalls, {0, ~0u, font, plugin, goneStream, goneMusic, goneFont, gonePlugin}, BASS_ERROR_HANDLE);
    ExpectError(kFontCalls, {0, ~0u, stream, music, plugin, goneFont, goneStream}, BASS_ERROR_HANDLE);
    ExpectError(kPluginCalls, {0, ~0u, stream, music, font, gonePlugin}, BASS_ERROR_HANDLE);
    // And none of it has harmed those that are there.
    EXPECT_TRUE(BASS_ChannelPlay(stream, false) && BASS_ChannelPlay(music, false));
    EXPECT_TRUE(SetFont(font) && BASS_PluginFree(plugin));
    ASSERT_TRUE(BASS_Free());

    ExpectNoLibrary({0, stream, music, font, plugin, goneStream});
    ASSERT_TRUE(InitManualOutput(44100));
    ExpectError(kChannelCalls, {stream, music}, BASS_ERROR_HANDLE);
    ExpectError(kFontCalls, {font}, BASS_ERROR_HANDLE);
    ASSERT_TRUE(BASS_Free());
}

}  // namespace hullrider
