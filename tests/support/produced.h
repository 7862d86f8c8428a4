// What a response producer prints, taken apart.
#pragma once

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

struct Produced {
    int status;
    std::string body;  // without the line end that closes it
};

// Returns nothing unless the text is one header with a status that producers have and, if anything
// behind it, one line that is JSON.
inline std::optional<Produced> takeApart(const std::string& text) {
    Produced produced = {};
    std::sscanf(text.c_str(), "HTTP/1.1 %d", &produced.status);
    const int statuses[] = {200, 400, 404, 500, 501, 503};
    const std::string header = "HTTP/1.1 " + std::to_string(produced.status) +
                               " \r\nContent-Type: application/json\r\n\r\n";
    if (!std::count(std::begin(statuses), std::end(statuses), produced.status) ||
        !text.starts_with(header) || !text.ends_with("\r\n")) {
        return std::nullopt;
    }
    if (text == header) {
        return produced;
    }
    produced.body = text.substr(header.size(), text.size() - header.size() - 2);
    std::string ascii = produced.body;  // bytes above ASCII stand for themselves
    for (char& c : ascii) {
        c = static_cast<unsigned char>(c) < 0x80 ? c : '?';
    }
    return nlohmann::json::accept(ascii) ? std::optional(produced) : std::nullopt;
}
