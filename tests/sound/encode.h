// Files in any format, by the ffmpeg command. Native only: there is none under Wine.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace hullrider {

// Encodes one file into another; `arguments` are ffmpeg's for the output. Returns its path.
inline std::string EncodeFile(const std::string& from, const std::string& to, const std::string& arguments) {
    const std::string command =
        std::string(HULLRIDER_FFMPEG) + " -v error -nostdin -y -i '" + from + "' " + arguments + " '" + to + "'";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    return to;
}

}  // namespace hullrider
