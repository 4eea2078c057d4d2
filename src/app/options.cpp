#include "app/options.h"

#include <charconv>
#include <string_view>
#include <utility>

#include "platform/folder.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

constexpr std::string_view kHelp =
    R"(Hullrider Radio: plays your music like a radio station.

  FILE or DIR ...       play these songs once, then the mix
  --data-dir DIR        keep the settings and all other state in DIR
  --music DIR           play the albums (folders) in DIR, in this run only; may be repeated
  --fallback-music DIR  the same, if no music folder is configured
  --output OUTPUT       default: the system's sound device
                        null: keep time, make no sound
                        wav:FILE: record the sound to FILE
  --directory-url URL   search for stations on this server instead of radio-browser.info
  --for SECONDS         quit after that time
  --simulate N          play nothing: draw N songs by your library and settings, and report how
                        often each type comes
  --version, --help)";

bool ParseOutput(const std::string& value, OutputChoice& output) {
    if (value == "default") {
        output = {OutputKind::kDefault, ""};
    } else if (value == "null") {
        output = {OutputKind::kNull, ""};
    } else if (value.starts_with("wav:") && value.size() > 4) {
        output = {OutputKind::kWav, value.substr(4)};
    } else {
        return false;
    }
    return true;
}

bool ParseSeconds(const std::string& value, std::optional<double>& seconds) {
    constexpr double kMost = 1e9;
    double parsed = 0.0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), parsed);
    if (error != std::errc() || end != value.data() + value.size()) return false;
    if (!(parsed >= 0.0 && parsed <= kMost)) return false;
    seconds = parsed;
    return true;
}

bool ParseCount(const std::string& value, std::optional<int64_t>& count) {
    constexpr int64_t kMost = 1'000'000'000;
    int64_t parsed = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), parsed);
    if (error != std::errc() || end != value.data() + value.size()) return false;
    if (parsed < 1 || parsed > kMost) return false;
    count = parsed;
    return true;
}

bool ParseServer(std::string value, std::optional<std::string>& server) {
    if (!value.starts_with("http://") && !value.starts_with("https://")) return false;
    while (value.ends_with('/')) value.pop_back();
    server = std::move(value);
    return true;
}

// Applies an option that takes a value. False when the value is invalid.
bool ApplyValue(std::string_view name, const std::string& value, RunOptions& options) {
    if (value.empty()) return false;
    if (name == "--data-dir") {
        options.dataDir = AbsolutePath(value);
    } else if (name == "--music") {
        options.music.push_back(AbsolutePath(value));
    } else if (name == "--fallback-music") {
        options.fallbackMusic = AbsolutePath(value);
    } else if (name == "--output") {
        return ParseOutput(value, options.output);
    } else if (name == "--directory-url") {
        return ParseServer(value, options.directoryUrl);
    } else if (name == "--simulate") {
        return ParseCount(value, options.simulate);
    } else {
        return ParseSeconds(value, options.forSec);
    }
    return true;
}

bool TakesValue(std::string_view name) {
    return name == "--data-dir" || name == "--music" || name == "--fallback-music" || name == "--output" ||
           name == "--for" || name == "--simulate" || name == "--directory-url";
}

}  // namespace

bool ParseOptions(const std::vector<std::string>& arguments, RunOptions& options, std::string& error) {
    RunOptions parsed;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& name = arguments[i];
        if (name == "--version") {
            parsed.showVersion = true;
        } else if (name == "--help") {
            parsed.showHelp = true;
        } else if (IsFile(name) || IsFolder(name)) {
            parsed.files.push_back(AbsolutePath(name));
        } else if (!TakesValue(name)) {
            error = "neither an option nor a file: " + name + " (see --help)";
            return false;
        } else if (i + 1 == arguments.size()) {
            error = name + " needs a value (see --help)";
            return false;
        } else if (!ApplyValue(name, arguments[++i], parsed)) {
            error = "bad value for " + name + ": " + arguments[i] + " (see --help)";
            return false;
        }
    }
    options = parsed;
    return true;
}

std::string HelpText() {
    return std::string(kHelp);
}

std::string VersionText() {
    return "Hullrider Radio " HULLRIDER_VERSION;
}

}  // namespace hullrider
