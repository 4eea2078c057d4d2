// What the station directory is asked for a search text. Pure.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace hullrider {

inline constexpr size_t kShortestSearch = 3;  // characters; shorter texts are not searched for
inline constexpr int kMostStationsInAnswer = 300;

// The texts to search for, in ascending order of their bytes: the whole text and, with `expandWords`, each of its words
// and each pair of words in both orders.
std::set<std::string> SearchQueries(const std::string& text, bool expandWords);

// The two requests of a query, by name and then by tag. `base` is the directory's scheme and host.
std::vector<std::string> RequestUrls(std::string_view base, const std::string& query);

}  // namespace hullrider
