#include "radio/playlist_files.h"

#include <gtest/gtest.h>

namespace hullrider {
namespace {

using Entries = std::vector<std::string>;

TEST(PlaylistFiles, KindsAreFoundAnywhereInTheUrl) {
    EXPECT_EQ(PlaylistFileOf("http://a/b.pls?x=1"), PlaylistFile::kPls);
    EXPECT_EQ(PlaylistFileOf("http://a/b.m3u8"), PlaylistFile::kM3u);
    EXPECT_EQ(PlaylistFileOf("http://a/b.m3u/c.pls"), PlaylistFile::kPls);
    EXPECT_EQ(PlaylistFileOf("http://a/b.PLS"), PlaylistFile::kNone);
}

TEST(PlaylistFiles, M3uKeepsEveryLineThatIsNoComment) {
    EXPECT_EQ(ParseM3u("#EXTM3U\nhttp://a\r\n\n#x\nhttp://b"), (Entries{"http://a\r", "", "http://b"}));
    EXPECT_EQ(ParseM3u("\nhttp://a\n"), (Entries{"", "http://a"}));
    EXPECT_EQ(ParseM3u(""), Entries{});
}

TEST(PlaylistFiles, PlsKeepsTheValuesOfItsFileKeys) {
    EXPECT_EQ(ParsePls("[playlist]\nFile2=http://b?x=y\nTitle1=File\nfile1=http://a\nFile\n File3=c\nFile1= d "),
              (Entries{"http://b?x=y", " d "}));
}

TEST(PlaylistFiles, OnlyTheEndOfAUrlTellsWhatIsNoStream) {
    for (const char* url : {"http://a/b.m3u8", ".mp4", "x.mkv", "x.flv", "x.avi"}) {
        EXPECT_TRUE(IsUnsupportedStreamUrl(url)) << url;
    }
    for (const char* url : {"http://a/b.m3u", "http://a/b.m3u8?x", "x.MP4", "mp4", ""}) {
        EXPECT_FALSE(IsUnsupportedStreamUrl(url)) << url;
    }
}

}  // namespace
}  // namespace hullrider
