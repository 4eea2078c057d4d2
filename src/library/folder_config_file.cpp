#include "library/folder_config_file.h"

#include <nlohmann/json.hpp>
#include <optional>

#include "platform/console.h"
#include "platform/files.h"
#include "platform/folder.h"

namespace hullrider {

namespace {

constexpr size_t kMaxConfigBytes = size_t{1} << 20;
constexpr size_t kMaxErrorBytes = 1000;  // the parser quotes what it stumbled over, however long that is
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
    try {
        const nlohmann::json object = nlohmann::json::parse(text);
        if (!object.is_object()) {
            error = "it holds no object";
            return false;
        }
        const bool soundFontGood = TakeText(object, kSoundFontKey, config.soundFontDirectoryPath, error);
        return TakeText(object, kCompanionKey, config.hullriderPath, error) && soundFontGood;
    } catch (const nlohmann::json::exception& exception) {
        error = std::string(exception.what()).substr(0, kMaxErrorBytes);
        return false;
    }
}

bool LoadFolderConfig(const std::string& path, FolderConfig& config) {
    const std::optional<std::string> text = ReadStateFile(path, kMaxConfigBytes);
    if (!text && !IsFile(path)) return false;
    std::string error = "it cannot be read";
    if (text && ReadFolderConfig(*text, config, error)) return true;
    PrintErrorLine("Failed to read " + path + ": " + error);
    KeepBadFile(path);
    return false;
}

bool SaveFolderConfig(const std::string& path, const FolderConfig& config) {
    const nlohmann::ordered_json object = {{kSoundFontKey, config.soundFontDirectoryPath},
                                           {kCompanionKey, config.hullriderPath}};
    if (WriteWholeFile(path, object.dump(4, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n")) {
        return true;
    }
    PrintErrorLine("Failed to open file for writing: " + path);
    return false;
}

std::vector<std::string> CompanionMusicFolders(const std::string& hullriderPath) {
    const std::string content = JoinPath(hullriderPath, "Tonewell");
    return {JoinPath(content, "MIDI Songs"), JoinPath(content, "Mp3 Songs"), JoinPath(content, "Tracker Songs")};
}

std::string CompanionSoundFontFolder(const std::string& hullriderPath) {
    return JoinPath(JoinPath(hullriderPath, "Tonewell"), "SoundFonts");
}

}  // namespace hullrider
