#include "medialist/sort_rules.h"

#include <cjson/cJSON.h>

#include <algorithm>
#include <array>
#include <functional>
#include <string_view>
#include <utility>

#include "medialist/media_class.h"
#include "vcore/log.h"

namespace {

using Document = std::unique_ptr<cJSON, decltype(&cJSON_Delete)>;

constexpr char kCreate[] = "create";  // what the log lines call the reader

enum class Rule { kHighlight, kNewestFirst, kOldestFirst, kSmallestFirst, kMediaType, kCount };

Rule ruleNamed(std::string_view text) {
    static constexpr std::pair<std::string_view, Rule> kRules[] = {
        {"hilighted_first", Rule::kHighlight},
        {"hilighted_manual_first", Rule::kHighlight},
        {"hilighted_auto_first", Rule::kHighlight},
        {"date_by_day_newest_first", Rule::kNewestFirst},
        {"date_by_day_oldest_first", Rule::kOldestFirst},
        {"filesize_smallest_first", Rule::kSmallestFirst},
        {"media_type", Rule::kMediaType},
    };
    const auto* const named = std::find_if(std::begin(kRules), std::end(kRules),
                                           [text](const auto& rule) { return rule.first == text; });
    return named == std::end(kRules) ? Rule::kCount : named->second;
}

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

std::unique_ptr<Comparinator> makeComparator(Rule rule, const cJSON* document) {
    switch (rule) {
        case Rule::kHighlight:
            return std::make_unique<CompareHighlight>();
        case Rule::kNewestFirst:
            return std::make_unique<CompareByDayNewestFirst>();
        case Rule::kOldestFirst:
            return std::make_unique<CompareDayOldestFirst>();
        case Rule::kSmallestFirst:
            return std::make_unique<CompareFileSize>();
        case Rule::kMediaType:
            return readMediaType(document);
        case Rule::kCount:
            break;
    }
    return nullptr;
}

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
    std::array<bool, static_cast<size_t>(Rule::kCount)> taken{};
    const bool valid = forEachText(document.get(), "sort_rules", "required", [&](const char* text) {
        const Rule rule = ruleNamed(text);
        if (rule == Rule::kCount || std::exchange(taken[static_cast<size_t>(rule)], true)) {
            return true;
        }
        auto comparator = makeComparator(rule, document.get());
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
