#include "radio/stream_tags.h"

#include <gtest/gtest.h>

namespace hullrider {
namespace {

StreamNowPlaying Read(const std::string& headers, const char* metadata, const std::vector<std::string>& tags = {}) {
    return ReadStreamTags({headers.c_str(), metadata}, tags);
}

// Texts that each end with a zero; std::string adds the last one.
std::string Headers(std::initializer_list<const char*> texts) {
    std::string block;
    for (const char* text : texts) block.append(text).push_back('\0');
    return block;
}

TEST(StreamTags, AStreamThatSaysNothingIsUnknown) {
    const StreamNowPlaying unknown{"Unknown Station", "Unknown Song", "", ""};
    EXPECT_EQ(ReadStreamTags({}, {}), unknown);
    EXPECT_EQ(Read(Headers({"icy-name:", "icy-genre", "no separator"}), "StreamTitle"), unknown);
    EXPECT_EQ(Read(Headers({"ICY-NAME:Loud"}), "StreamTitle=;StreamUrl='x'"), unknown) << "names are exact";
}

TEST(StreamTags, HeadersAndTitleAreTakenAsTheyStand) {
    const StreamNowPlaying playing =
        Read(Headers({"ICY 200 OK", "icy-name:First", "icy-name: Second: FM", "icy-description:d", "icy-genre:Jazz"}),
             "StreamTitle='A; B';StreamUrl='u';");
    EXPECT_EQ(playing.stationName, " Second: FM") << "the later one, untrimmed";
    EXPECT_EQ(playing.songTitle, "'A");
    EXPECT_EQ(playing.stationDescription, "d");
    EXPECT_EQ(playing.stationGenre, "Jazz");
    EXPECT_EQ(Read(Headers({}), "StreamTitle='Artist - Song';").songTitle, "'Artist - Song'");
}

TEST(StreamTags, TheDirectorysTagsAreTheGenre) {
    EXPECT_EQ(Read(Headers({"icy-genre:Jazz"}), nullptr, {"rock", "pop"}).stationGenre, "rock > pop");
}

TEST(StreamTags, LongTextsAreCutBetweenCharacters) {
    const std::string longName = "icy-name:" + std::string(126, 'n') + "\xC3\xA4";
    EXPECT_EQ(Read(Headers({longName.c_str()}), nullptr).stationName, std::string(126, 'n'));
    EXPECT_EQ(Read(Headers({}), nullptr, {std::string(500, 't')}).stationGenre, std::string(127, 't'));
}

}  // namespace
}  // namespace hullrider
