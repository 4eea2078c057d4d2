#include "library/music_type.h"

#include <gtest/gtest.h>

namespace hullrider {

TEST(MusicType, OfAFileTakesTheLastExtensionInAnyCase) {
    const std::pair<const char*, MusicType> table[] = {
        {"Song.MID", kMidi},        {"a.midi", kMidi},       {"/a.b/c/Song.Mp3", kMp3},      {"a.m4a", kMp3},
        {"a.flac", kMp3},           {"a.mod", kTracker},     {"two.dots.xm", kTracker},      {"a.s3m", kTracker},
        {"..it", kTracker},         {"a.mtm", kTracker},     {"a.wav", kUnsupported},        {"a.ogg", kUnsupported},
        {".mp3", kUnsupported},     {"mp3", kUnsupported},   {"/music/.mp3", kUnsupported},  {"", kUnsupported},
        {"/a.mp3/b", kUnsupported}, {"song.", kUnsupported}, {"song.mp3.bak", kUnsupported}, {"a.mp3 ", kUnsupported},
        {"song.mp3/", kUnsupported}};
    for (const auto& [path, type] : table) EXPECT_EQ(MusicTypeOf(path), type) << path;
    EXPECT_EQ(GetMusicType(".mid"), kMidi);
    for (const char* extension : {"mid", ".MID", ""}) EXPECT_EQ(GetMusicType(extension), kUnsupported) << extension;
}

TEST(MusicType, LowerCaseLeavesBytesOutsideAsciiAlone) {
    EXPECT_EQ(ToLower("AZ[\xC3\x84]@z"), "az[\xC3\x84]@z");
}

}  // namespace hullrider
