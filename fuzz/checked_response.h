// Runs a response producer and ends the process when it prints anything but one complete response.
#pragma once

#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/support/scripted_platform.h"

inline void require(bool holds) {
    if (!holds)
        std::abort();
}

inline std::string printedBy(auto producer) {
    char* text = nullptr;
    size_t size = 0;
    FILE* const saved = stdout;
    stdout = open_memstream(&text, &size);
    producer();
    std::fclose(stdout);
    stdout = saved;
    std::string printed(text, size);
    std::free(text);
    return printed;
}

inline void checkResponse(auto producer) {
    std::string printed = printedBy(producer);
    require(scripted::platform.opened == scripted::platform.closed);
    if (printed.empty())
        return;
    const int status = std::atoi(printed.c_str() + std::string("HTTP/1.1 ").size());
    const std::string header =
        "HTTP/1.1 " + std::to_string(status) + " \r\nContent-Type: application/json\r\n\r\n";
    const int known[] = {200, 400, 404, 500, 501, 503};
    require(std::count(std::begin(known), std::end(known), status) == 1);
    require(printed.starts_with(header));
    std::string body = printed.substr(header.size());
    for (char& c : body)  // bytes above ASCII stand for themselves
        c = static_cast<unsigned char>(c) < 0x80 ? c : '?';
    require(body.empty() || (body.ends_with("\r\n") && nlohmann::json::accept(body)));
}

inline void makeCard() {
    mkdir("/tmp/fuse_d", 0777);
}
