#include "library/folder_config_file.h"

#include <nlohmann/json.hpp>
#include <optional>

#include "platform/folder.h"
#include "platform/json.h"
#include "platform/state_files.h"

namespace hullrider {

namespace {

constexpr const char* kSoundFontKey = "soundFontDirectoryPath";
constexpr const char* kCompanionKey = "hullriderPath";

bool TakeText(const nlohmann::json& object, const char* key, std::string& field, std::string& error) {
    const auto found = object.find(key);
    if (found == object.end()) return true;
    if (!found->is_string()) {
        error = std::string(key) + " is not a text";
        return false;
    }
    field = found->get<std::string>();
    return true;
}

}  // namespace

bool ReadFolderConfig(std::string_view text, FolderConfig& config, std::string& error) {
    const std::optional<nlohmann::json> object = ParseJsonObject(text, error);
    if (!object) return false;
    const bool soundFontGood = TakeText(*object, kSoundFontKey, config.soundFontDirectoryPath, error);
    return TakeText(*object, kCompanionKey, config.hullriderPath, error) && soundFontGood;
}

bool LoadFolderConfig(const std::string& path, FolderConfig& config) {
    const auto read = [&](std::string_view text, std::string& error) {
        return ReadFolderConfig(text, config, error) ? StateReading::kWhole : StateReading::kPartly;
    };
    return LoadStateFile(path, {}, read) == StateReading::kWhole;
}

bool SaveFolderConfig(const std::string& path, const FolderConfig& config) {
    const nlohmann::ordered_json object = {{kSoundFontKey, config.soundFontDirectoryPath},
                                           {kCompanionKey, config.hullriderPath}};
    return SaveStateFile(path, object.dump(4, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n");
}

std::vector<std::string> CompanionMusicFolders(const std::string& hullriderPath) {
    const std::string content = JoinPath(hullriderPath, "Tonewell");
    return {JoinPath(content, "MIDI Songs"), JoinPath(content, "Mp3 Songs"), JoinPath(content, "Tracker Songs")};
}

std::string CompanionSoundFontFolder(const std::string& hullriderPath) {
    return JoinPath(JoinPath(hullriderPath, "Tonewell"), "SoundFonts");
}

}  // namespace hullrider
