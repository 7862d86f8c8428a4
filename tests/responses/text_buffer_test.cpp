// The buffers that responses are built in, at their limits and without memory.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

#include "libvxMediaRTOSDB/src/http/response/http_output.h"
#include "libvxMediaRTOSDB/src/http/text/media_db_output_guard.h"
#include "libvxMediaRTOSDB/src/http/text/text_buffer.h"
#include "tests/responses/produced_response.h"
#include <mediacheckd/vxMediaRTOSDB/http_status.h>
#include <mediacheckd/vxMediaRTOSDB/media_formatters.h>
#include <mediacheckd/vxMediaRTOSDB/query_settings.h>

namespace {

using scripted::platform;

TEST(TextBuffer, KeepsItsLimit) {
    const struct {
        TextBufferKind kind;
        size_t limit;
        std::string message;
    } cases[] = {
        {TextBufferKind::kEntry, 1536, "1537 > 1536, entry buff exceeded, "},
        {TextBufferKind::kDirectory, 65536, "65537 > 65536, dir buff exceeded, "},
        {TextBufferKind::kPage, 131072, "exceeded buffer length for vxoutput 131073, "},
    };
    for (const auto& c : cases) {
        const std::unique_ptr<char, decltype(&std::free)> memory(allocateText(c.kind), &std::free);
        char* position = memory.get();
        for (const size_t size : {c.limit - 1, c.limit, c.limit + 1}) {
            scripted::reset();
            TextBuffer buffer(c.kind, memory.get(), &position);
            buffer.clear();
            const std::string start(size - 23, 'x');
            buffer.append(here(), start);
            // The last part's bound is above its size: only the exact measure tells that it fits.
            const SourcePlace place = here();
            buffer.append(place, "a", 4294967295u, JsonText{"\"\\\x01"}, std::string_view("b"), 7u);
            const bool fits = size <= c.limit;
            EXPECT_EQ(buffer.complete(), fits);
            EXPECT_EQ(buffer.text(), fits ? start + "a4294967295\\\"\\\\\\u0001b7" : "");
            EXPECT_EQ(platform.logged(c.message +
                                      "text_buffer_test.cpp:" + std::to_string(place.line) + "\n"),
                      !fits);
        }
    }
}

template <typename Part>
std::string written(const Part& part) {
    char text[128];
    std::string result(text, write(text, part));
    EXPECT_EQ(result.size(), exactSize(part));
    return result;
}

TEST(TextPart, WritesEveryLengthOfNumber) {
    uint64_t power = 1;
    for (int digits = 0; digits < 20; ++digits, power *= 10) {
        for (const uint64_t number : {power - 1, power, power + power / 9, -power}) {
            EXPECT_EQ(written(number), std::to_string(number));
            EXPECT_EQ(written(static_cast<int32_t>(number)),
                      std::to_string(static_cast<int32_t>(number)));
        }
    }
}

std::string gTaken;

ssize_t takeButWhatIsLost(void*, const char* text, size_t size) {
    const std::string_view taken(text, size);
    gTaken += taken.starts_with("lost") ? "" : taken;
    return taken.starts_with("lost") ? 0 : static_cast<ssize_t>(size);
}

TEST(HttpOutput, EndsWhereItCouldNotBeWritten) {
    FILE* const whole = std::exchange(
        stdout, fopencookie(nullptr, "w", {nullptr, takeButWhatIsLost, nullptr, nullptr}));
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    printText("lost before it begins");
    printHeader(HTTP_OK);
    printText("begun");
    printText("lost");
    printText("behind it");
    std::fclose(std::exchange(stdout, whole));
    EXPECT_TRUE(gTaken.ends_with("\r\n\r\nbegun")) << gTaken;
}

TEST(TextPart, EscapesEveryByteAtEveryPlace) {
    for (size_t place = 0; place < 17; ++place) {
        for (int byte = 0; byte < 0x80; ++byte) {  // what stands around it is plain
            std::string text(17, static_cast<char>(0x80 + byte));
            std::string escaped = text;
            text[place] = static_cast<char>(byte);
            char code[] = {'\\', text[place], '\0', '\0', '\0', '\0', '\0'};
            if (byte < 0x20) {
                std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(byte));
            }
            escaped.replace(place, 1, byte < 0x20 || strchr("\"\\", byte) ? code : code + 1);
            EXPECT_EQ(written(JsonText{text}), escaped);
        }
    }
}

TEST(Formatters, GoOnAfterAKeyThatDoesNotFit) {
    MediaDBOutputGuard output(nullptr);
    TextBuffer entry = entryOf(*output.get());
    entry.append(here(), std::string(kEntryLimit, 'x'));
    const db_gumi gumi = {{1}};
    EXPECT_EQ(formatGUMI(output.get(), kAllFields, ",", &gumi, &gumi), HTTP_INTERNAL_ERROR);
    EXPECT_EQ(entry.text(), ",\"pgumi\":\"01000000000000000000000000000000\"");
    EXPECT_TRUE(platform.logged("entry buff exceeded, media_formatters.cpp:"));
    EXPECT_EQ(formatContentInfo(output.get(), kAllFields, nullptr), HTTP_OK);
}

}  // namespace
