#include "library/music_type.h"

#include <gtest/gtest.h>

namespace hullrider {
namespace {

TEST(MusicType, FollowsFromTheWholeExtension) {
    const std::pair<const char*, MusicType> table[] = {
        {".midi", kMidi},        {".mid", kMidi},           {".mp3", kMp3},         {".m4a", kMp3},
        {".flac", kMp3},         {".mod", kTracker},        {".xm", kTracker},      {".s3m", kTracker},
        {".it", kTracker},       {".mtm", kTracker},        {"", kUnsupported},     {".wav", kUnsupported},
        {".ogg", kUnsupported},  {".sf2", kUnsupported},    {".MID", kUnsupported}, {"mid", kUnsupported},
        {".mp3 ", kUnsupported}, {".mp3.bak", kUnsupported}};
    for (const auto& [extension, type] : table) EXPECT_EQ(GetMusicType(extension), type) << extension;
}

TEST(MusicType, OfAFileTakesTheLastExtensionInAnyCase) {
    const std::pair<const char*, MusicType> table[] = {{"Song.MID", kMidi},        {"/a.b/c/Song.Mp3", kMp3},
                                                       {"two.dots.xm", kTracker},  {"..it", kTracker},
                                                       {".mp3", kUnsupported},     {"/music/.mp3", kUnsupported},
                                                       {"mp3", kUnsupported},      {"", kUnsupported},
                                                       {"/a.mp3/b", kUnsupported}, {"song.mp3.bak", kUnsupported},
                                                       {"song.", kUnsupported},    {"song.mp3/", kUnsupported}};
    for (const auto& [path, type] : table) EXPECT_EQ(MusicTypeOf(path), type) << path;
}

TEST(MusicType, LowerCaseLeavesBytesOutsideAsciiAlone) {
    EXPECT_EQ(ToLower("AZ[\xC3\x84]@z"), "az[\xC3\x84]@z");
}

}  // namespace
}  // namespace hullrider
