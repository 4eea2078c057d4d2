#include "platform/state_files.h"

#include <chrono>
#include <filesystem>
#include <thread>

#include "platform/console.h"
#include "platform/files.h"
#include "platform/folder.h"
#include "platform/paths.h"

namespace hullrider {

namespace {

bool IsLargerThan(const std::string& path, size_t maxBytes) {
    std::error_code error;
    const uintmax_t size = std::filesystem::file_size(PathFromUtf8(path), error);
    return !error && size > maxBytes;
}

// For an existing file that is not too large.
std::optional<std::string> ReadPatiently(const std::string& path, size_t maxBytes) {
    constexpr int kAttempts = 5;
    constexpr std::chrono::milliseconds kRetry(40);
    std::optional<std::string> text = ReadWholeFile(path, maxBytes);
    for (int attempt = 1; attempt < kAttempts && !text && IsFile(path); attempt++) {
        std::this_thread::sleep_for(kRetry);
        text = ReadWholeFile(path, maxBytes);
    }
    return text;
}

}  // namespace

std::optional<std::string> ReadStateFile(const std::string& path, size_t maxBytes, std::string& error) {
    error.clear();
    if (!IsFile(path)) return std::nullopt;
    if (IsLargerThan(path, maxBytes)) {
        error = "it is larger than " + std::to_string(maxBytes >> 20U) + " MB";
        return std::nullopt;
    }
    std::optional<std::string> text = ReadPatiently(path, maxBytes);
    if (!text) error = "it cannot be read";
    return text;
}

StateReading LoadStateFile(const std::string& path, const std::string& cannotOpen,
                           const std::function<StateReading(std::string_view text, std::string& error)>& read) {
    std::string error;
    const std::optional<std::string> text = ReadStateFile(path, kMostStateBytes, error);
    if (!text && error.empty()) {
        if (!cannotOpen.empty()) PrintErrorLine(cannotOpen);
        return StateReading::kUnreadable;
    }
    const StateReading reading = text ? read(*text, error) : StateReading::kUnreadable;
    if (reading == StateReading::kWhole) return reading;
    PrintErrorLine("Failed to read " + path + ": " + error);
    KeepBadFile(path);
    return reading;
}

bool SaveStateFile(const std::string& path, std::string_view text, std::string_view cannotWrite) {
    if (WriteWholeFile(path, text)) return true;
    PrintErrorLine(cannotWrite);
    return false;
}

bool SaveStateFile(const std::string& path, std::string_view text) {
    return SaveStateFile(path, text, "Failed to open file for writing: " + path);
}

}  // namespace hullrider
