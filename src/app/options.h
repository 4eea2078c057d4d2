// The command line, the same for both fronts.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "audio/output_choice.h"

namespace hullrider {

// Paths are absolute.
struct RunOptions {
    std::optional<std::string> dataDir;        // instead of the folder under Documents
    std::vector<std::string> music;            // music directories for this run, not saved
    std::optional<std::string> fallbackMusic;  // music directory for this run if none is configured, not saved
    std::optional<std::string> directoryUrl;   // server of the station directory, scheme and host
    std::vector<std::string> files;            // files and folders to play once
    OutputChoice output;
    std::optional<double> forSec;     // quit after this time
    std::optional<int64_t> simulate;  // only simulate playing so many songs
    bool showVersion = false;
    bool showHelp = false;
};

// Reads the arguments, UTF-8 and without the program's name. On a bad one, `error` receives one line and `options`
// stays unchanged.
bool ParseOptions(const std::vector<std::string>& arguments, RunOptions& options, std::string& error);

// What --help and --version print.
std::string HelpText();
std::string VersionText();

}  // namespace hullrider
