#include "tests/responses/produced_response.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>

using namespace scripted;

static int sAllocationsLeft = -1;

void failAllocation(int n) {
    sAllocationsLeft = n;
}

// The linker puts these names in calloc's place.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" void* __real_calloc(size_t count, size_t size);
extern "C" void* __wrap_calloc(size_t count, size_t size) {
    return sAllocationsLeft-- == 0 ? nullptr : __real_calloc(count, size);
}
// NOLINTEND(bugprone-reserved-identifier)

Produced produce(const std::function<int()>& producer) {
    testing::internal::CaptureStdout();
    const int result = producer();
    const std::string text = testing::internal::GetCapturedStdout();
    const auto produced = takeApart(text);
    EXPECT_TRUE(produced) << text;
    EXPECT_EQ(result, produced && produced->status == 200 ? 0 : -1);
    EXPECT_EQ(platform.opened, platform.closed);
    return produced.value_or(Produced());
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
    for (size_t i = start; i < items.size() && count < wordAt(request, 4); ++i, ++count) {
        append(page, items[i]);
    }
    const auto total = static_cast<uint32_t>(items.size());
    Bytes message = join({words({wordAt(request, 0), 0, count, 1, wordAt(request, 8)}),
                          words({start, listOptions, 0, total, 1}), page});
    message.resize(std::min(message.size(), messageSize));
    return reply(message);
}
