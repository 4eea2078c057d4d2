#include "radio/directory_queries.h"

#include <sstream>

#include "platform/http.h"

namespace hullrider {

namespace {

std::vector<std::string> WordsOf(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> words;
    for (std::string word; in >> word;) words.push_back(word);
    return words;
}

}  // namespace

std::set<std::string> SearchQueries(const std::string& text, bool expandWords) {
    std::set<std::string> queries{text};
    if (!expandWords) return queries;
    const std::vector<std::string> words = WordsOf(text);
    queries.insert(words.begin(), words.end());
    for (size_t i = 0; i < words.size(); ++i) {
        for (size_t j = i + 1; j < words.size(); ++j) {
            queries.insert(words[i] + ' ' + words[j]);
            queries.insert(words[j] + ' ' + words[i]);
        }
    }
    return queries;
}

std::vector<std::string> RequestUrls(std::string_view base, const std::string& query) {
    const std::string escaped = EscapeForUrl(query), limit = "limit=" + std::to_string(kMostStationsInAnswer);
    return {std::string(base) + "/json/stations/search?name=" + escaped + "&" + limit,
            std::string(base) + "/json/stations/bytag/" + escaped + "?" + limit};
}

}  // namespace hullrider
