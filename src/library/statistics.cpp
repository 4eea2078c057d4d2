#include "library/statistics.h"

#include <limits>
#include <optional>

#include "library/state_json.h"
#include "platform/json.h"
#include "platform/state_files.h"

namespace hullrider {

namespace {

using Json = nlohmann::json;

constexpr std::array<const char*, kItemTypes> kTypeKeys{"midi", "mp3", "tracker", "stations", "chapters"};

void Raise(int64_t& count, int64_t by = 1) {
    constexpr int64_t kMost = std::numeric_limits<int64_t>::max();
    count = count > kMost - by ? kMost : count + by;
}

void Add(Played& to, const Played& played) {
    Raise(to.count, played.count);
    to.seconds += played.seconds;
}

void Add(StatisticsCounts& to, const StatisticsCounts& counts) {
    for (size_t i = 0; i < to.byType.size(); ++i) Add(to.byType[i], counts.byType[i]);
    Add(to.favorites, counts.favorites);
    Raise(to.starts, counts.starts);
    Raise(to.skips, counts.skips);
}

void Count(Statistics& statistics, int32_t type, bool isFavorite, const Played& played) {
    StatisticsCounts counts;
    if (type < 0 || static_cast<size_t>(type) >= counts.byType.size()) return;
    counts.byType[static_cast<size_t>(type)] = played;
    if (isFavorite) counts.favorites = played;
    Add(statistics.thisRun, counts);
    Add(statistics.allTime, counts);
}

Played PlayedIn(const Json& object, const char* key) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_object()) return {};
    return {CountIn(*found, "count"), SecondsIn(*found, "seconds")};
}

nlohmann::ordered_json JsonOf(const Played& played) {
    return {{"count", played.count}, {"seconds", played.seconds}};
}

}  // namespace

void CountStart(Statistics& statistics) {
    Raise(statistics.thisRun.starts);
    Raise(statistics.allTime.starts);
}

void CountSkip(Statistics& statistics) {
    Raise(statistics.thisRun.skips);
    Raise(statistics.allTime.skips);
}

void CountPlayed(Statistics& statistics, int32_t type, bool isFavorite) {
    Count(statistics, type, isFavorite, {1, 0.0});
}

void CountHeard(Statistics& statistics, int32_t type, bool isFavorite, double seconds) {
    if (seconds > 0.0) Count(statistics, type, isFavorite, {0, seconds});
}

bool ReadStatistics(std::string_view text, StatisticsCounts& counts, std::string& error) {
    const std::optional<Json> object = ParseJsonObject(text, error);
    if (!object) return false;
    counts = {};
    for (size_t i = 0; i < kTypeKeys.size(); ++i) counts.byType[i] = PlayedIn(*object, kTypeKeys[i]);
    counts.favorites = PlayedIn(*object, "favorites");
    counts.starts = CountIn(*object, "starts");
    counts.skips = CountIn(*object, "skips");
    return true;
}

std::string StatisticsText(const StatisticsCounts& counts) {
    nlohmann::ordered_json object;
    for (size_t i = 0; i < kTypeKeys.size(); ++i) object[kTypeKeys[i]] = JsonOf(counts.byType[i]);
    object["favorites"] = JsonOf(counts.favorites);
    object["starts"] = counts.starts;
    object["skips"] = counts.skips;
    return object.dump(4) + "\n";
}

bool LoadStatistics(const std::string& path, Statistics& statistics) {
    StatisticsCounts counts;
    const auto read = [&](std::string_view text, std::string& error) {
        return ReadStatistics(text, counts, error) ? StateReading::kWhole : StateReading::kUnreadable;
    };
    if (LoadStateFile(path, {}, read) == StateReading::kUnreadable) return false;
    Add(statistics.allTime, counts);
    return true;
}

bool SaveStatistics(const std::string& path, const Statistics& statistics) {
    return SaveStateFile(path, StatisticsText(statistics.allTime));
}

}  // namespace hullrider
