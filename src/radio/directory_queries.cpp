#include "radio/directory_queries.h"

#include <cstdio>
#include <sstream>

namespace hullrider {

namespace {

// As RFC 3986 has it: all but unreserved characters as %XX.
std::string Escaped(std::string_view text) {
    constexpr std::string_view kUnreserved = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
    std::string escaped;
    for (const char c : text) {
        if (kUnreserved.find(c) != std::string_view::npos) {
            escaped += c;
        } else {
            char code[4];
            std::snprintf(code, sizeof code, "%%%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
            escaped += code;
        }
    }
    return escaped;
}

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

std::vector<std::string> RequestUrls(std::string_view base, std::string_view query) {
    const std::string escaped = Escaped(query), limit = "limit=" + std::to_string(kMostStationsInAnswer);
    return {std::string(base) + "/json/stations/search?name=" + escaped + "&" + limit,
            std::string(base) + "/json/stations/bytag/" + escaped + "?" + limit};
}

}  // namespace hullrider
