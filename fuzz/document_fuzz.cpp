// Any document that people write: the order of candidates, their rules, what a card says of its
// files. The first byte says which.
#include <fstream>

#include "medialist/sort/sort_key.h"
#include "simulator/card/card_settings.h"
#include "simulator/card/input_error.h"
#include "tools/mediactl/rules_file.h"
#include <mediacheckd/medialist/sort_rules.h>
#include <mediacheckd/medialist/zep_media_list.h>

namespace {

constexpr char kDocument[] = "/tmp/document";

// However they are sorted, the entries are in an order.
void sortBy(const std::string& document) {
    const std::unique_ptr<Comparinator> order(create(document.c_str()));
    const auto* const rules = dynamic_cast<const CompoundCompare*>(order.get());
    if (rules == nullptr) {
        return;
    }
    std::vector<MediaEntry> entries;
    for (uint32_t i = 0; i < 40; ++i) {
        zep_item_s item{};
        item.content_type = i % 13;
        item.highlight = i & 1;
        item.clip = i >> 1 & 1;
        item.timestamp = 1514764800 + i % 3 * 15552000;
        item.size_bytes = uint64_t{i % 7} << 20;
        entries.emplace_back(item, i);
    }
    if (!sortByKeys(*rules, entries)) {
        return;
    }
    for (size_t i = 1; i < entries.size(); ++i) {
        if (order->compare(&entries[i], &entries[i - 1]) > 0) {
            std::abort();
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) {
        return 0;
    }
    const std::string document(reinterpret_cast<const char*>(data + 1), size - 1);
    if (data[0] % 3 == 0) {
        sortBy(document);
        return 0;
    }
    std::ofstream(kDocument) << document;
    try {
        if (data[0] % 3 == 1) {
            (void)mediactl::readRules(kDocument);
        } else {
            const simulator::CardSettings settings(kDocument);
            (void)settings.contentType("100VXCAM", "VXMF0001.MP4");
            std::vector<simulator::MediaItem> items(1);
            settings.applyTo(items);
        }
    } catch (const simulator::InputError&) {
    }
    return 0;
}
