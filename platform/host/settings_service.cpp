#include "platform/host/settings_service.h"

#include <endian.h>

#include <cstring>

namespace host {

namespace {

void appendWord(std::vector<std::byte>& reply, uint32_t value) {
    const uint32_t wire = htole32(value);
    const auto bytes = std::as_bytes(std::span(&wire, 1));
    reply.insert(reply.end(), bytes.begin(), bytes.end());
}

}  // namespace

std::vector<std::byte> answerSettingRequest(const Settings& settings,
                                            std::span<const std::byte> request) {
    std::vector<std::byte> reply;
    uint32_t key = 0;
    auto setting = settings.end();
    if (request.size() == sizeof(key)) {
        std::memcpy(&key, request.data(), sizeof(key));
        setting = settings.find(le32toh(key));
    }
    if (setting == settings.end()) {
        appendWord(reply, kCsiUnknownKey);
        return reply;
    }
    appendWord(reply, 0);
    appendWord(reply, setting->second);
    return reply;
}

}  // namespace host
