#include "app/options.h"

#include <gtest/gtest.h>

#include "platform/paths.h"
#include "tests/temporary_folder.h"

namespace hullrider {

TEST(Options, EveryOptionIsRead) {
    RunOptions options;
    std::string error;
    ASSERT_TRUE(ParseOptions({"--data-dir", "d", "--music", "a b", "--music", "\xC3\xA4", "--fallback-music", "f",
                              "--output", "wav:C:\\x.wav", "--for", "1.5", "--simulate", "10000"},
                             options, error))
        << error;
    EXPECT_EQ(options.dataDir, AbsolutePath("d"));
    EXPECT_EQ(options.music, (std::vector<std::string>{AbsolutePath("a b"), AbsolutePath("\xC3\xA4")}));
    EXPECT_EQ(options.fallbackMusic, AbsolutePath("f"));
    EXPECT_EQ(options.output.kind, OutputKind::kWav);
    EXPECT_EQ(options.output.wavPath, "C:\\x.wav");
    EXPECT_EQ(options.forSec, 1.5);
    EXPECT_EQ(options.simulate, 10000);
}

TEST(Options, FilesAndFoldersAreMusicToPlayOnceInTheirOrder) {
    const TemporaryFolder folder;
    const std::string song = folder.Write("\xC3\xA4 b.mp3", "x"), inside = folder.Write("sub/c.mp3", "x");
    RunOptions options;
    std::string error;
    ASSERT_TRUE(ParseOptions({song, "--output", "null", folder.At("sub"), inside}, options, error)) << error;
    EXPECT_EQ(options.files, (std::vector<std::string>{song, folder.At("sub"), inside}));
    EXPECT_EQ(options.output.kind, OutputKind::kNull);
    EXPECT_FALSE(ParseOptions({song, folder.At("missing.mp3")}, options, error));
}

TEST(Options, ABadOneIsOneLineAndChangesNothing) {
    const std::vector<std::string> junk[] = {{"--nonsense"},       {"song.mp3"},         {""},
                                             {"--music"},          {"--music", ""},      {"--output", "tape"},
                                             {"--output", "wav:"}, {"--help", "--music"}};
    std::vector<std::vector<std::string>> all(std::begin(junk), std::end(junk));
    for (const char* text : {"soon", "-1", "nan", "inf", "1e300", "12s", "0x10"}) all.push_back({"--for", text});
    for (const char* text : {"0", "-1", "1e4", "99999999999"}) all.push_back({"--simulate", text});
    for (const std::vector<std::string>& arguments : all) {
        RunOptions options;
        options.dataDir = "kept";
        std::string error;
        EXPECT_FALSE(ParseOptions(arguments, options, error)) << arguments.front();
        EXPECT_FALSE(error.empty());
        EXPECT_EQ(error.find('\n'), std::string::npos);
        EXPECT_EQ(options.dataDir, "kept");
    }
}

}  // namespace hullrider
