#include "app/data_directory.h"

#include <gtest/gtest.h>

#include "tests/temporary_folder.h"

namespace hullrider {
namespace {

std::string FailureOf(const std::string& folder) {
    try {
        CreateDataDirectory(folder);
    } catch (const std::filesystem::filesystem_error& failure) {
        return failure.what();
    }
    return "";
}

TEST(DataDirectory, IsCreatedOneLevelDeepOrTheReasonIsThrown) {
    const TemporaryFolder folder;
    CreateDataDirectory(folder.At("D\xC3\xA4ten"));
    EXPECT_TRUE(folder.Has("D\xC3\xA4ten"));
    EXPECT_EQ(FailureOf(folder.At("D\xC3\xA4ten")), "");  // it is there already

    EXPECT_NE(FailureOf(folder.At("missing/below")).find("create_directory"), std::string::npos);
    EXPECT_NE(FailureOf(folder.Write("file", "x")).find("create_directory"), std::string::npos);
    EXPECT_EQ(folder.Read("file"), "x");
}

TEST(DataDirectory, TheOptionBeatsThePortableFileBeatsTheDocuments) {
    const std::string portable = StatePath(ProgramFolder(), "portable.txt");
    RunOptions options;
    EXPECT_TRUE(ChooseDataDirectory(options).ends_with("Hullrider Radio v1.1"));
    std::ofstream(PathFromUtf8(portable)) << "";
    EXPECT_EQ(ChooseDataDirectory(options), WorkingFolder());
    options.dataDir = "some";
    EXPECT_EQ(ChooseDataDirectory(options), "some");
    std::filesystem::remove(PathFromUtf8(portable));
}

}  // namespace
}  // namespace hullrider
