#include <mediacheckd/medialist/sort_rules.h>

#include <cjson/cJSON.h>

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

#include "medialist/sort/media_class.h"
#include <mediacheckd/vcore/log.h>

namespace {

using Document = std::unique_ptr<cJSON, decltype(&cJSON_Delete)>;

// A member whose value is an array of texts, and what the log says where it is not.
struct TextArray {
    const char* member;
    const char* missing;
    const char* noArray;
    const char* noText;
};

constexpr TextArray kSortRules = {
    "sort_rules",
    "create: JSON is missing required sort_rules field\n",
    "create: JSON sort_rules field is not an array\n",
    "create: Expected type string for sort_rules children.\n",
};
constexpr TextArray kMediaTypeOrder = {
    "media_type_order",
    "create: JSON is missing manditory media_type_order field\n",
    "create: JSON media_type_order field is not an array\n",
    "create: Expected type string for media_type_order children.\n",
};

// Null after logging that the document has no such array.
const cJSON* findArray(const cJSON* document, const TextArray& texts) {
    const cJSON* const array = cJSON_GetObjectItem(document, texts.member);
    if (cJSON_IsArray(array) != 0) {
        return array;
    }
    VLOG_ERROR("%s", array == nullptr ? texts.missing : texts.noArray);
    return nullptr;
}

// Null after logging that the element is no text.
const char* textOf(const cJSON* element, const TextArray& texts) {
    const char* const text = cJSON_GetStringValue(element);
    if (text == nullptr) {
        VLOG_ERROR("%s", texts.noText);
    }
    return text;
}

std::unique_ptr<Comparinator> readMediaType(const cJSON* document) {
    const cJSON* const names = findArray(document, kMediaTypeOrder);
    if (names == nullptr) {
        return nullptr;
    }
    std::vector<int> order;
    const cJSON* element = nullptr;
    cJSON_ArrayForEach(element, names) {
        const char* const text = textOf(element, kMediaTypeOrder);
        if (text == nullptr) {
            return nullptr;
        }
        const auto* const name = std::ranges::find(kMediaClassNames, std::string_view(text));
        if (name != kMediaClassNames.end()) {
            order.push_back(static_cast<int>(name - kMediaClassNames.begin()));
        }
    }
    return std::make_unique<CompareMediaType>(order);
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

Comparinator* create(const char* json) {
    auto compound = std::make_unique<CompoundCompare>();
    if (json == nullptr) {
        compound->append(std::make_unique<CompareByDayNewestFirst>());
        compound->append(std::make_unique<CompareFileSize>());
        return compound.release();
    }
    const Document document(cJSON_Parse(json), cJSON_Delete);
    if (document == nullptr) {
        const char* const place = cJSON_GetErrorPtr();
        VLOG_ERROR("create: Unable to parse JSON: %s\n", place != nullptr ? place : "");
        return nullptr;
    }
    const cJSON* const rules = findArray(document.get(), kSortRules);
    if (rules == nullptr) {
        return nullptr;
    }
    // A rule decides nothing where it stood before, so it is taken once: sorting costs no more
    // however often a document repeats it.
    std::set<Make> taken;
    const cJSON* element = nullptr;
    cJSON_ArrayForEach(element, rules) {
        const char* const text = textOf(element, kSortRules);
        if (text == nullptr) {
            return nullptr;
        }
        const Rule* const rule = std::ranges::find(kRules, text, &Rule::name);
        if (rule == std::end(kRules) || !taken.insert(rule->make).second) {
            continue;
        }
        auto comparator = rule->make(document.get());
        if (comparator == nullptr) {
            return nullptr;
        }
        compound->append(std::move(comparator));
    }
    return compound.release();
}
