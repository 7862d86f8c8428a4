#include "tests/responses/produced_response.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>
#include <fstream>
#include <new>
#include <nlohmann/json.hpp>

using namespace scripted;

static int sAllocationsLeft = -1;

void failAllocation(int n) {
    sAllocationsLeft = n;
}

void* operator new[](size_t size, const std::nothrow_t&) noexcept {
    return sAllocationsLeft-- == 0 ? nullptr : ::operator new[](size);
}

Produced produce(const std::function<int()>& producer) {
    testing::internal::CaptureStdout();
    const int result = producer();
    const std::string text = testing::internal::GetCapturedStdout();

    Produced produced = {result, 0, ""};
    std::sscanf(text.c_str(), "HTTP/1.1 %d", &produced.status);
    const std::string header = "HTTP/1.1 " + std::to_string(produced.status) +
                               " \r\nContent-Type: application/json\r\n\r\n";
    EXPECT_EQ(text.substr(0, header.size()), header);
    if (text.size() > header.size()) {
        EXPECT_TRUE(text.ends_with("\r\n"));
        produced.body = text.substr(header.size(), text.size() - header.size() - 2);
        std::string parsed = produced.body;  // its bytes above ASCII stand for themselves
        for (char& c : parsed)
            c = static_cast<unsigned char>(c) < 0x80 ? c : '?';
        EXPECT_TRUE(nlohmann::json::accept(parsed)) << parsed;
    }
    EXPECT_EQ(result, produced.status == 200 ? 0 : -1);
    EXPECT_EQ(platform.opened, platform.closed);
    return produced;
}

void resetWithCard() {
    reset();
    failAllocation(-1);
    mkdir(kCardFolder, 0777);
    mkdir("/tmp/fuse_d/MISC", 0777);
    std::ofstream("/tmp/fuse_d/MISC/card") << "12345";
}

Exchange ListDatabase::answer(const Bytes& request) const {
    const uint32_t start = wordAt(request, 12);
    Bytes page;
    uint32_t count = 0;
    for (size_t i = start; i < items.size() && count < wordAt(request, 4); i++, count++)
        append(page, items[i]);
    const auto total = static_cast<uint32_t>(items.size());
    Bytes message = join({words({wordAt(request, 0), 0, count, 1, wordAt(request, 8)}),
                          words({start, listOptions, 0, total, 1}), page});
    message.resize(std::min(message.size(), messageSize));
    return reply(message);
}
