#include <mediacheckd/medialist/sort_rules.h>

#include <cjson/cJSON.h>

#include <algorithm>
#include <functional>
#include <set>
#include <string_view>
#include <utility>

#include "medialist/sort/media_class.h"
#include <mediacheckd/vcore/log.h>

namespace {

using Document = std::unique_ptr<cJSON, decltype(&cJSON_Delete)>;

constexpr char kCreate[] = "create";  // what the log lines call the reader

// Hands each text of a member array to take, as long as take returns true.
// Returns whether all were taken; what the document lacks is logged.
bool forEachText(const cJSON* document, const char* member, const char* need,
                 const std::function<bool(const char* text)>& take) {
    const cJSON* const array = cJSON_GetObjectItem(document, member);
    if (array == nullptr) {
        VLOG_ERROR("%s: JSON is missing %s %s field\n", kCreate, need, member);
        return false;
    }
    if (cJSON_IsArray(array) == 0) {
        VLOG_ERROR("%s: JSON %s field is not an array\n", kCreate, member);
        return false;
    }
    const cJSON* element = nullptr;
    cJSON_ArrayForEach(element, array) {
        if (cJSON_IsString(element) == 0) {
            VLOG_ERROR("%s: Expected type string for %s children.\n", kCreate, member);
            return false;
        }
        if (!take(element->valuestring)) {
            return false;
        }
    }
    return true;
}

std::unique_ptr<Comparinator> readMediaType(const cJSON* document) {
    std::vector<int> order;
    const bool valid =
        forEachText(document, "media_type_order", "manditory", [&order](std::string_view text) {
            const auto* const name =
                std::find(kMediaClassNames.begin(), kMediaClassNames.end(), text);
            if (name != kMediaClassNames.end()) {
                order.push_back(static_cast<int>(name - kMediaClassNames.begin()));
            }
            return true;
        });
    return valid ? std::make_unique<CompareMediaType>(order) : nullptr;
}

using Make = std::unique_ptr<Comparinator> (*)(const cJSON* document);

template <class C>
std::unique_ptr<Comparinator> make(const cJSON* /*document*/) {
    return std::make_unique<C>();
}

struct Rule {
    std::string_view name;
    Make make;  // gives null after logging what the document lacks
};

constexpr Rule kRules[] = {
    {"hilighted_first", make<CompareHighlight>},
    {"hilighted_manual_first", make<CompareHighlight>},
    {"hilighted_auto_first", make<CompareHighlight>},
    {"date_by_day_newest_first", make<CompareByDayNewestFirst>},
    {"date_by_day_oldest_first", make<CompareDayOldestFirst>},
    {"filesize_smallest_first", make<CompareFileSize>},
    {"media_type", readMediaType},
};

}  // namespace

std::unique_ptr<CompoundCompare> readSortRules(const char* json) {
    auto compound = std::make_unique<CompoundCompare>();
    if (json == nullptr) {
        compound->append(std::make_unique<CompareByDayNewestFirst>());
        compound->append(std::make_unique<CompareFileSize>());
        return compound;
    }
    const Document document(cJSON_Parse(json), cJSON_Delete);
    if (document == nullptr) {
        const char* const place = cJSON_GetErrorPtr();
        VLOG_ERROR("%s: Unable to parse JSON: %s\n", kCreate, place != nullptr ? place : "");
        return nullptr;
    }
    // A rule decides nothing where it stood before, so it is taken once: sorting costs no more
    // however often a document repeats it.
    std::set<Make> taken;
    const bool valid = forEachText(document.get(), "sort_rules", "required", [&](const char* text) {
        const Rule* const rule = std::ranges::find(kRules, text, &Rule::name);
        if (rule == std::end(kRules) || !taken.insert(rule->make).second) {
            return true;
        }
        auto comparator = rule->make(document.get());
        if (comparator == nullptr) {
            return false;
        }
        compound->append(std::move(comparator));
        return true;
    });
    return valid ? std::move(compound) : nullptr;
}

Comparinator* create(const char* json) {
    return readSortRules(json).release();
}
